#include "velc/pack.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include "velc/charmap_writer.h"
#include "velc/conversion_writer.h"
#include "velc/locale_writer.h"
#include "velc/output_file.h"
#include "velc/progress.h"
#include "velc/registry_source.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

// What became of one item.
struct outcome {
    std::uintmax_t bytes = 0;
    std::vector<substitution> substitutions;
    std::vector<std::string> dropped_classes;
    std::vector<std::string> collate_warnings;
    std::size_t substituted = 0; // characters of a conversion
    std::string missing;         // the warning about a conversion that is left out
    std::string error;
};

class packer {
public:
    packer(const std::vector<pack_item> &plan, const codeset_table &codesets,
           source_library &sources, const pack_options &options)
        : plan_(plan), codesets_(codesets), sources_(sources), options_(options),
          locales_(sources, codesets), sets_(sources), outcomes_(plan.size()) {}

    void run() {
        progress bar(plan_.size(), !options_.quiet);
        std::atomic<std::size_t> next = 0;
        const auto work = [&] {
            for (std::size_t i; (i = next++) < plan_.size();) {
                make(plan_[i], outcomes_[i]);
                bar.done(plan_[i].title());
            }
        };
        std::vector<std::jthread> others;
        for (unsigned i = 1; i < jobs(); ++i) others.emplace_back(work);
        work();
    }

    pack_result result() const {
        pack_result sum;
        for (std::size_t i = 0; i < plan_.size(); ++i) add(sum, plan_[i], outcomes_[i]);
        std::ranges::sort(sum.notes);
        const auto repeated = std::ranges::unique(sum.notes);
        sum.notes.erase(repeated.begin(), repeated.end());
        return sum;
    }

private:
    unsigned jobs() const {
        const unsigned wanted =
            options_.jobs != 0 ? options_.jobs : std::max(1u, std::thread::hardware_concurrency());
        return static_cast<unsigned>(std::min<std::size_t>(wanted, plan_.size()));
    }

    void make(const pack_item &item, outcome &made) {
        try {
            const std::string text = text_of(item, made);
            made.bytes = text.size();
            const std::filesystem::path file = options_.root / item.file;
            write_output(file, text);
            for (const std::string &name : item.links) write_link(file, name);
        } catch (const missing_set &missing) {
            made.missing = missing.what();
        } catch (const std::bad_alloc &) {
            made.error = fmt::format("{}: out of memory", item.title());
        } catch (const source_error &error) {
            made.error = error.what();
        } catch (const std::exception &error) {
            made.error = fmt::format("{}: {}", item.title(), error.what());
        }
    }

    std::string text_of(const pack_item &item, outcome &made) {
        if (item.what == pack_item::kind::registry) return make_registry(codesets_, sources_);
        if (item.what == pack_item::kind::charmap)
            return write_charmap(*charmap_named(sources_, item.charmap),
                                 codesets_.header_name(codesets_.at(item.charmap), item.number),
                                 item.number);
        if (item.what == pack_item::kind::conversion) return conversion_text(item, made);
        locale_variant variant{item.overlay.get(), {}};
        variant.collate.thai = item.thai;
        locale_object object = locales_.write(item.source, item.charmap, item.number, variant);
        made.substitutions = std::move(object.substitutions);
        made.dropped_classes = std::move(object.dropped_classes);
        made.collate_warnings = std::move(object.collate_warnings);
        return std::move(object.text);
    }

    std::string conversion_text(const pack_item &item, outcome &made) {
        conversion_object object = write_conversion({sets_.get(item.charmap), item.number},
                                                    {sets_.get(item.target), item.target_number});
        made.substituted = object.substituted;
        return std::move(object.text);
    }

    // The same set may be missing from many conversions.
    static void warn_once(pack_result &sum, const std::string &text) {
        if (!std::ranges::count(sum.warnings, text)) sum.warnings.push_back(text);
    }

    static void add(pack_result &sum, const pack_item &item, const outcome &made) {
        if (!made.error.empty()) return sum.errors.push_back(made.error);
        if (!made.missing.empty())
            return warn_once(sum, fmt::format("warning: {}; left out", made.missing));
        sum.bytes += made.bytes;
        sum.locales += item.what == pack_item::kind::locale;
        sum.charmaps += item.what == pack_item::kind::charmap;
        sum.conversions += item.what == pack_item::kind::conversion;
        sum.substituted += !made.substitutions.empty();
        sum.lossy += std::ranges::any_of(made.substitutions, &substitution::lossy);
        for (const substitution &one : made.substitutions)
            sum.notes.push_back(fmt::format("{}: {}", item.title(), to_string(one)));
        if (made.substituted > 0)
            sum.notes.push_back(
                fmt::format("{}: {} characters have a substitute", item.title(), made.substituted));
        for (const std::string &name : made.dropped_classes)
            sum.notes.push_back(fmt::format("{}: class {} has no bit left", item.title(), name));
        for (const std::string &text : made.collate_warnings)
            sum.warnings.push_back(fmt::format("{}: warning: LC_COLLATE: {}", item.title(), text));
    }

    const std::vector<pack_item> &plan_;
    const codeset_table &codesets_;
    source_library &sources_;
    const pack_options &options_;
    locale_writer locales_;
    conversion_sets sets_;
    std::vector<outcome> outcomes_;
};

} // namespace

pack_result make_pack(const std::vector<pack_item> &plan, const codeset_table &codesets,
                      source_library &sources, const pack_options &options) {
    packer work(plan, codesets, sources, options);
    work.run();
    return work.result();
}

} // namespace velc
