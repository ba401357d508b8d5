#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "velc/source/locale_source.h"
#include "velc/source/translit.h"

namespace velc {

// Follows `copy` and `include` from file to file. Safe to use from many threads as long as the
// function that delivers the files is.
class resolver {
public:
    using source_pointer = std::shared_ptr<const locale_source>;
    explicit resolver(std::function<source_pointer(std::string_view)> fetch);

    std::shared_ptr<const locale_definition> locale(std::string_view name);
    std::shared_ptr<const translit_table> translit(std::string_view name);

private:
    struct walk;
    struct collate_walk;

    template <typename T>
    std::shared_ptr<const T> category(section<T> locale_source::*member, std::string_view name,
                                      walk &at);
    std::shared_ptr<const velc::ctype> ctype(std::string_view name, walk &at);
    std::shared_ptr<const collation> collate(std::string_view name, walk &at);
    void collate_steps(const locale_source &from, collate_walk &to, walk &at);
    void translit_layers(std::string_view name, std::vector<translit_table::layer> &layers,
                         walk &at);

    std::function<source_pointer(std::string_view)> fetch_;
    std::mutex mutex_;
    std::map<std::string, std::shared_ptr<const velc::ctype>, std::less<>> ctypes_; // merged ones
};

} // namespace velc
