#include "locale/era_list.h"

#include "charmap/char_reader.h"
#include "ext/error.h"
#include "ext/memory.h"
#include "record/portable.h"
#include "record/texts.h"
#include "time/era.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

enum era_field : int32_t {
    field_direction,
    field_offset,
    field_start,
    field_end,
    field_name,
    field_format,
    field_other_name,
    field_count,
};

constexpr era_date beginning_of_time = {INT32_MIN, 1, 1};
constexpr era_date end_of_time = {INT32_MAX, 12, 31};

template <typename Unit> struct piece {
    const Unit *begin, *end;

    size_t length() const { return static_cast<size_t>(end - begin); }
};

template <typename Unit> struct pieces {
    int32_t count;
    piece<Unit> of[field_count];
};

// Cuts a text at its colons. The last field goes on to the end.
template <typename Unit> pieces<Unit> split(const vel_locale *locale, const Unit *text) {
    pieces<Unit> found{};
    char_reader<Unit> reader(locale, text);
    const Unit *begin = text;
    while (vel_wchar c = reader.peek()) {
        const Unit *end = reader.at();
        reader.next();
        if (portable_of(locale, c) != ':' || found.count == field_count - 1) continue;
        found.of[found.count++] = {begin, end};
        begin = reader.at();
    }
    found.of[found.count++] = {begin, reader.at()};
    return found;
}

// Reads the parts of one field, which must leave nothing over.
class field_reader {
public:
    field_reader(const vel_locale *locale, piece<vel_wchar> field) : locale_(locale), at_(field) {}

    bool at_end() const { return at_.begin == at_.end; }
    bool take(char ascii) {
        if (at_end() || portable_of(locale_, *at_.begin) != static_cast<unsigned char>(ascii)) {
            return false;
        }
        ++at_.begin;
        return true;
    }
    // At most nine digits, so that every number fits.
    bool number(int32_t *value) {
        const vel_wchar *first = at_.begin;
        for (*value = 0; !at_end() && at_.begin - first < 9; ++at_.begin) {
            uint32_t digit = static_cast<uint32_t>(portable_of(locale_, *at_.begin)) - '0';
            if (digit > 9) break;
            *value = *value * 10 + static_cast<int32_t>(digit);
        }
        return at_.begin != first;
    }
    bool whole_number(int32_t *value) { return number(value) && at_end(); }
    bool direction(int32_t *value) {
        *value = take('-') ? -1 : 1;
        return (*value == -1 || take('+')) && at_end();
    }
    bool date(era_date *date) {
        bool before_christ = take('-');
        if (!number(&date->year) || !take('/') || !number(&date->month) || !take('/') ||
            !whole_number(&date->day)) {
            return false;
        }
        // Such texts know no year 0: -1 is the year before year 1.
        if (before_christ) date->year = date->year == 0 ? 0 : 1 - date->year;
        return date->month >= 1 && date->month <= 12 && date->day >= 1 && date->day <= 31;
    }
    bool last_date(era_date *date) {
        field_reader endless = *this;
        bool past = endless.take('-');
        if ((past || endless.take('+')) && endless.take('*') && endless.at_end()) {
            *date = past ? beginning_of_time : end_of_time;
            return true;
        }
        return this->date(date);
    }

private:
    const vel_locale *locale_;
    piece<vel_wchar> at_;
};

bool read_dates(const vel_locale *locale, const piece<vel_wchar> *fields, era_entry &entry) {
    auto field = [&](era_field which) { return field_reader(locale, fields[which]); };
    if (!field(field_direction).direction(&entry.direction) ||
        !field(field_offset).whole_number(&entry.offset) ||
        !field(field_start).date(&entry.first) || !field(field_end).last_date(&entry.last)) {
        return false;
    }
    entry.start_year = entry.first.year;
    if (is_before(entry.last, entry.first)) {
        std::swap(entry.first, entry.last);
        entry.direction = -entry.direction;
    }
    return true;
}

// The one block: the entries, then their wide strings, then those in bytes.
class era_block {
public:
    // Room for every text in full, in characters of the greatest length.
    bool allocate(const vel_locale *locale) {
        const text_list &texts = locale->time.eras;
        size_t characters = 0, strings = 0;
        for (int32_t i = 0; i < texts.count; ++i) {
            characters += static_cast<size_t>(vel_wcslen(texts.items[i].wide));
            strings += 3;
        }
        size_t count = static_cast<size_t>(texts.count);
        size_t longest = static_cast<size_t>(characters_of(locale).longest);
        size_t size = count * sizeof(era_entry) + (characters + strings) * sizeof(vel_wchar) +
                      characters * longest + strings * text_padding;
        block_.reset(static_cast<era_entry *>(vel_alloc(size)));
        wide_ = reinterpret_cast<vel_wchar *>(block_.get() + count);
        bytes_ = reinterpret_cast<char *>(wide_ + characters + strings);
        return static_cast<bool>(block_);
    }

    void add(const vel_locale *locale, const locale_text &text) {
        pieces<vel_wchar> wide = split(locale, text.wide);
        pieces<char> bytes = split(locale, text.bytes);
        if (wide.count <= field_format || bytes.count != wide.count) return;
        era_entry entry{};
        if (!read_dates(locale, wide.of, entry)) return;
        auto keep = [&](era_field field) { return copy(wide.of[field], bytes.of[field]); };
        entry.name = keep(field_name);
        entry.format = keep(field_format);
        entry.other_name = wide.count == field_count ? keep(field_other_name) : entry.name;
        block_[count_++] = entry;
    }

    void give_to(time_derived &derived) {
        derived.era_count = static_cast<int32_t>(count_);
        if (count_) derived.eras = block_.release();
    }

private:
    locale_text copy(piece<vel_wchar> wide, piece<char> bytes) {
        locale_text copied = {bytes_, wide_};
        memcpy(wide_, wide.begin, wide.length() * sizeof *wide_);
        memcpy(bytes_, bytes.begin, bytes.length());
        memset(bytes_ + bytes.length(), 0, text_padding);
        wide_[wide.length()] = 0;
        wide_ += wide.length() + 1;
        bytes_ += bytes.length() + text_padding;
        return copied;
    }

    host_ptr<era_entry> block_;
    size_t count_ = 0;
    vel_wchar *wide_;
    char *bytes_;
};

} // namespace

int32_t build_era_list(vel_locale *locale) {
    const text_list &texts = locale->time.eras;
    vel_free(std::exchange(locale->time_derived.eras, nullptr));
    locale->time_derived.era_count = 0;
    if (texts.count == 0) return 0;
    era_block block;
    if (!block.allocate(locale)) return fail(locale, VEL_ENOMEM);
    for (int32_t i = 0; i < texts.count; ++i) block.add(locale, texts.items[i]);
    block.give_to(locale->time_derived);
    return 0;
}

} // namespace vel
