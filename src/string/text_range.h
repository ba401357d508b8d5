// Text as the functions of this family take it, bytes or wide values, terminated or counted; and
// the checks that they share.
#pragma once

#include "charmap/character.h"
#include "ext/error.h"

namespace vel {

template <typename Unit> struct text_range {
    const Unit *begin;
    int32_t length; // -1: terminated

    bool terminated() const { return length < 0; }
    // Null for terminated text.
    const Unit *end() const { return terminated() ? nullptr : begin + length; }
};

using byte_range = text_range<unsigned char>;
using wide_range = text_range<vel_wchar>;

inline byte_range range_of(const char *bytes, int32_t length) {
    return {as_bytes(bytes), length};
}
inline wide_range range_of(const vel_wchar *wide, int32_t length) {
    return {wide, length};
}

// The error number of arguments that cannot be used, or 0.
template <typename Unit> int32_t fault_of(text_range<Unit> text) {
    if (!text.begin) return VEL_EFAULT;
    return text.length < -1 ? VEL_EBADLEN : 0;
}

template <typename Unit> int32_t fault_of(text_range<Unit> a, text_range<Unit> b) {
    if (!a.begin || !b.begin) return VEL_EFAULT;
    if ((a.length == -1) != (b.length == -1)) return VEL_EMIXEDLEN;
    return a.length < -1 || b.length < -1 ? VEL_EBADLEN : 0;
}

// Wide text needs no locale: without one there is no cell to store a number in.
inline void store_error(vel_locale *locale, int32_t number) {
    if (locale) set_error(locale, number);
}
inline int32_t fail_text(vel_locale *locale, int32_t number) {
    store_error(locale, number);
    return -1;
}

// A position in text of the caller, as the interface gives it.
inline char *as_result(const unsigned char *at) {
    return const_cast<char *>(reinterpret_cast<const char *>(at));
}
inline vel_wchar *as_result(const vel_wchar *at) {
    return const_cast<vel_wchar *>(at);
}

} // namespace vel
