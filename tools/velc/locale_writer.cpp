#include "velc/locale_writer.h"

#include <algorithm>

#include "velc/number_sections.h"
#include "velc/object_text.h"
#include "velc/source/time_overlay.h"
#include "velc/time_section.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr int locale_object_version = 11;

// What a source does not have is empty.
template <typename T> const T &or_empty(const std::shared_ptr<const T> &category) {
    static const T empty;
    return category ? *category : empty;
}

// Header values are for people and one line each.
std::string header_value(std::u32string_view text) {
    std::string value = to_utf8(text);
    std::ranges::replace_if(
        value, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return value;
}

overlaid_time time_of(const locale_definition &locale, const overlay_source *overlay) {
    const time_format &own = or_empty(locale.time);
    if (!overlay) return {own, {}};
    return overlay_time(own, overlay->file, overlay->text);
}

void append_section(std::string &body, const char *name, std::string_view section) {
    body.append("### ").append(name).append("\n").append(section);
}

void append_number(std::string &key, std::uint32_t number) {
    key.append(reinterpret_cast<const char *>(&number), sizeof number);
}

// Everything of an LC_CTYPE that its section depends on, as bytes to compare.
std::string content_key(const ctype &from) {
    std::string key;
    for (const char_class &one : from.classes) {
        key.append(one.name).append(1, '\0');
        append_number(key, static_cast<std::uint32_t>(one.ranges.size()));
        for (const code_range &range : one.ranges) {
            append_number(key, range.first);
            append_number(key, range.last);
        }
    }
    for (const char_map &one : from.maps) {
        key.append(one.name).append(1, '\0');
        append_number(key, static_cast<std::uint32_t>(one.pairs.size()));
        for (const code_pair &pair : one.pairs) {
            append_number(key, pair.from);
            append_number(key, pair.to);
        }
    }
    return key;
}

} // namespace

locale_object locale_writer::write(std::string_view source, std::string_view charmap_name,
                                   std::uint16_t number, const locale_variant &variant) {
    const codeset &known = codesets_.at(charmap_name);
    const auto codeset = sources_.charmap(charmap_name);
    if (codeset->by_bytes().empty())
        throw tool_error("{}: found no characters, expected some", codeset->file());
    const auto locale = sources_.locale(source);
    const overlaid_time time = time_of(*locale, variant.overlay);
    const auto substitutes = sources_.translit(source);
    text_encoder encoder(*codeset, substitutes.get());

    const std::string name = codesets_.header_name(known, number);
    const ctype &written = or_empty(locale->ctype);
    const ctype_section &classes =
        ctypes_.get(content_key(written), codeset, [&] { return write_ctype(written, *codeset); });
    const collation *order = locale->collate.get();
    const collate_section &collation =
        collations_.get(collate_key(order, variant.collate), codeset, [&] {
            return write_collate(order, *codeset, sources_.symbols(), variant.collate);
        });
    std::string body = name + "\n";
    append_section(body, "LC_CTYPE", classes.text);
    append_section(body, "LC_COLLATE", collation.text);
    append_section(body, "LC_NUMERIC", write_numeric(or_empty(locale->numeric), encoder));
    append_section(body, "LC_MONETARY", write_monetary(or_empty(locale->monetary), encoder));
    append_section(body, "LC_TIME", write_time(time.time, encoder));
    append_section(body, "LC_MESSAGES", write_messages(or_empty(locale->messages), encoder));

    object_header header{"locale_object", locale_object_version, {}};
    header.lines = {fmt::format("CODESET={}", name), fmt::format("CODESET_NUMBER={}", number),
                    fmt::format("CHARMAP={}", charmap_name), fmt::format("SOURCE={}", source)};
    if (variant.overlay) header.lines.push_back("OVERLAY=" + variant.overlay->name);
    if (locale->ident)
        header.lines.push_back("SOURCE_REVISION=" + header_value(locale->ident->revision));
    return {with_header(header, body), encoder.substitutions(), classes.dropped_classes,
            time.warnings, collation.warnings};
}

} // namespace velc
