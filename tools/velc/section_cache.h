#pragma once

// Sections that many objects have in common, each made once.

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "velc/source/charmap.h"

namespace velc {

// Safe to use from many threads: those that ask for a section in the making wait for it.
template <typename Section> class section_cache {
public:
    // The section of equal keys and code sets is the same; `make` gives it. What is returned stays.
    template <typename Make>
    const Section &get(std::string key, const std::shared_ptr<const charmap> &codeset,
                       const Make &make) {
        kept_section *kept = nullptr;
        {
            std::lock_guard lock(mutex_);
            auto &slot = kept_[{std::move(key), codeset}];
            if (!slot) slot = std::make_unique<kept_section>();
            kept = slot.get();
        }
        std::call_once(kept->made, [&] { kept->section = make(); });
        return kept->section;
    }

private:
    struct kept_section {
        std::once_flag made;
        Section section;
    };
    std::mutex mutex_;
    std::map<std::pair<std::string, std::shared_ptr<const charmap>>, std::unique_ptr<kept_section>>
        kept_;
};

} // namespace velc
