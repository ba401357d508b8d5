// The locale record: the object behind every locale handle, and all that later code reads from it.
//
// Each category is in one of two states: null (usable, with built-in defaults) or loaded. The
// strings, arrays and tables of a category belong to the locale that read it; a locale that copied
// the category only points at them.
#pragma once

#include "objfile/sealed.h"
#include "vels/info.h"
#include "vels/types.h"

namespace vel {

constexpr int32_t category_count = 6;
constexpr int32_t codeset_name_size = 21; // characters and terminator
constexpr int32_t file_name_size = 32;
constexpr int32_t max_passes = 8;
constexpr int32_t max_grouping = sizeof(vel_grouping::sizes) / sizeof(int32_t);

// A category as an index: VEL_CTYPE is 0.
constexpr int32_t category_index(int32_t category) {
    return category - VEL_CTYPE;
}

// A string of a locale: its bytes as read, and its wide copy, made when the category is
// initialised. Neither is ever null in a category that is null or loaded; an absent string is an
// empty one. Both end in zero bytes enough that decoding the bytes stops inside their block, even
// when the file cut a character short.
using locale_text = vel_text;

// A list of strings with its length.
struct text_list {
    int32_t count;
    locale_text *items;
};

// A class that the locale defines beside the built-in ones. Its mask is 2048 << (number % 32).
struct locale_class {
    int32_t number;
    char *name;
};

struct case_pair {
    vel_wchar upper; // 0: the character maps to itself
    vel_wchar lower;
};

struct ctype_category {
    const sealed_table *characters; // class mask of every character
    const sealed_table *cases;      // case index of every character, 0 for none
    int32_t class_count;
    locale_class *classes;
    int32_t pair_count;
    case_pair *pairs; // addressed from index 1
};

enum collation_kind : int32_t {
    collation_null = 0,
    collation_as_specified = 1,
    collation_thai = 2,
};

enum : int32_t { pass_forward = 1, pass_backward = 2 };

// Weight words.
enum : uint16_t {
    weight_ignore = 1,
    weight_expansion = 0x4000,
    weight_positional = 0x8000,
    weight_mask = 0x3FFF,
};

// Features of a collation, for hosts that choose among the single-byte functions.
enum : uint32_t {
    collate_has_expansions = 1,
    collate_has_elements = 2,
    collate_has_backward = 4,
    collate_has_positional = 8,
};

struct collation_pass {
    int32_t direction; // pass_forward or pass_backward
    uint16_t *weights; // by collation index
};

// A collating element: several characters that are ordered as one.
struct collating_element {
    int32_t count;
    int32_t index; // collation index
    vel_wchar *values;
};

// What a weight with the expansion bit stands for.
struct collating_expansion {
    int32_t count;
    vel_wchar *values;
};

// What a character adds to a quick key (collate/quick_key.h).
struct quick_key_record {
    uint16_t digits[3]; // of its weights in all passes but the last
    uint16_t traits;
    uint64_t last; // the digits of its weight in the last pass and of its value
};

// A collation in the form in which text is weighed: made from the lists of the category when it is
// initialised, in one block. All null in a category without passes.
struct collation_layout {
    // The weights of all passes side by side, 1 << row_bits of them for each collation index.
    // Ignorable weights are all weight_ignore, and weights of one number are all positional or none
    // is.
    const uint16_t *weights;
    uint32_t row_bits;
    const uint16_t *key_digits;         // of the weights, in rows like theirs
    int32_t quick_key_passes;           // 0: no text has a quick key
    const quick_key_record *quick_keys; // of the characters of one and two bytes of UTF-8
    const uint16_t *traits;             // of each index
    uint64_t followers[16];             // bits by the lowest ten of a value
    const uint32_t *element_order;      // numbers of the elements by first value, then by number
    const uint32_t *expansion_parts;    // the index of every value of every expansion, or no_index
    bool covers_bytes;                  // every byte has an index
    bool covers_utf8;                   // every well-formed UTF-8 character has one
    void *block;

    // Whether a character whose index follows in elements does so itself: punctuation of all kinds
    // shares indexes.
    bool may_follow(vel_wchar value) const { return followers[value / 64 % 16] >> value % 64 & 1; }
};
constexpr uint32_t no_index = 0xFFFFFFFF;
// What is to be known of a character before its weights are looked at.
enum : uint16_t {
    begins_element = 1,
    continues_element = 2,  // stands in one anywhere but last
    follows_element = 4,    // stands in one anywhere but first
    is_whole_element = 8,   // is one alone
    has_odd_weights = 0x10, // ignorable in some pass, or expanding
    expands = 0x20,         // in some pass
    needs_units = 0x40,     // expands in the first pass or is an element alone
    has_odd_key = 0x80,     // of other form than collate/quick_key.h is for
    ends_in_value = 0x100,  // positional in the last pass
};

struct collate_category {
    int32_t kind;
    int32_t code_order;             // non-zero: no collation, compare by character value
    const sealed_table *characters; // collation index of every character
    int32_t pass_count;
    int32_t index_count;
    int32_t max_weight;
    collation_pass passes[max_passes];
    int32_t element_count;
    collating_element *elements;
    int32_t expansion_count;
    collating_expansion *expansions;
    void *blocks; // what weights, elements, expansions and their values live in
    collation_layout layout;
};

using numeric_category = vel_numeric_conventions;
using monetary_category = vel_monetary_conventions;
using messages_category = vel_messages_conventions;
enum : int32_t { message_yesexpr, message_noexpr, message_yesstr, message_nostr, message_count };

enum calendar_number : int32_t {
    calendar_none,
    calendar_gregorian,
    calendar_hebrew,
    calendar_islamic,
    calendar_arabic,
};

struct time_category {
    int32_t calendar;
    text_list abbreviated_days; // seven, Sunday first
    text_list days;
    text_list abbreviated_months;
    text_list months;
    locale_text d_fmt;
    locale_text d_t_fmt;
    locale_text t_fmt;
    locale_text am;
    locale_text pm;
    locale_text t_fmt_ampm;
    text_list eras;
    locale_text era_d_fmt;
    locale_text era_d_t_fmt;
    locale_text era_t_fmt;
    text_list alt_digits; // items is null when absent
};

// One entry of the list of eras, ready for looking up by date.
struct era_date {
    int32_t year;  // in full, may be negative
    int32_t month; // 1 to 12
    int32_t day;
};
struct era_entry {
    era_date first, last; // in calendar order, both belong to the era
    int32_t offset;       // the number of the year that the era starts in
    int32_t direction; // 1: years count away from `start_year` into the future, -1: into the past
    int32_t start_year;
    locale_text name;
    locale_text other_name; // the name when there is no second one
    locale_text format;     // of the full year; empty when there is none
};

// What is made of TIME when the locale is completed; owned by the locale itself, never by the
// category. Each block is null while there is nothing in it.
struct time_derived {
    int32_t count; // of the trees
    void *trees;   // of names, which parsing searches
    int32_t era_count;
    era_entry *eras; // one block with their strings
};

// Strings that information queries hand out and no category holds as such; made when the locale is
// completed and owned by the locale itself, in one block. Each is empty while its category is null.
struct query_texts {
    locale_text eras;       // joined by ;
    locale_text alt_digits; // joined by ;
    locale_text currency;   // the symbol behind - or +
    void *block;            // null while all of them are empty
};

// The codes of the portable characters (letters, digits, the signs that numbers and formats are
// written with) in the code set.
struct portable_codes {
    unsigned char code_of[128];  // by ASCII code
    unsigned char ascii_of[256]; // 0: not a portable character
};

// What formatting needs of NUMERIC or MONETARY in ready form; owned by the locale itself. The
// strings belong to the category.
struct number_marks {
    const vel_wchar *decimal_point;
    int32_t decimal_point_length; // in characters
    const vel_wchar *thousands_sep;
    int32_t thousands_sep_length;
    vel_wchar positive_sign; // its first character, 0 when absent
    vel_wchar negative_sign;
};

using decode_function = int32_t (*)(vel_locale *locale, vel_wchar *out, const char *bytes,
                                    int32_t max_values);
using decode_counted_function = int32_t (*)(vel_locale *locale, vel_wchar *out, const char *bytes,
                                            int32_t byte_count, int32_t max_values);

} // namespace vel

struct vel_locale {
    int32_t error; // the error cell: first, so that the handle is its own error context
    double case_growth;
    double reserved_growth; // 1.0; nothing reads it

    // Flat tables of a single-byte code set, null for others; 256 entries each.
    unsigned char *byte_upper;
    unsigned char *byte_lower;
    uint16_t *byte_classes;

    int32_t single_byte;
    vel::decode_function decode; // whole-string decoding, chosen with the code set
    vel::decode_counted_function decode_counted;

    uint32_t collate_features;
    uint32_t collate_longest_element;

    vel::ctype_category ctype;
    vel::collate_category collate;
    const vel::portable_codes *portable; // chosen with the code set, never null

    vel_conventions conventions;
    vel::time_category time;
    vel::time_derived time_derived;
    vel::query_texts query_texts;
    vel::number_marks numeric_marks;
    vel::number_marks monetary_marks;

    // Bit (category - VEL_CTYPE): the category was copied from another locale and is not this one's
    // to free.
    uint32_t borrowed;

    char codeset_names[vel::category_count][vel::codeset_name_size];
    vel_wchar wide_codeset_names[vel::category_count][vel::codeset_name_size];
    char file_names[vel::category_count][vel::file_name_size];
    vel_wchar wide_file_names[vel::category_count][vel::file_name_size];
};
