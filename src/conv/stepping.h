// The loop that all conversions share. It passes stretches of plain characters by a run kernel and
// by quick steps without questions, and steps over every other character with all of them asked.
#pragma once

#include <bit>
#include <cstring>

#include "conv/source.h"
#include "conv/translate.h"
#include "ext/diag.h"
#include "ext/error.h"

namespace vel {

// What can become of a character.
enum class outcome { converted, no_character, cut_off, illegal, no_room };

inline int32_t refuse(vel_cv *cv, outcome why) {
    struct refusal {
        int32_t number;
        const char *message;
    };
    static constexpr refusal refusals[] = {
        {0, ""},
        {VEL_EILSEQ, "Error in Translation."},
        {VEL_EINVAL, "Error in Translation."},
        {VEL_EILSEQ, "Error in Translation (VEL_EILSEQ)"},
        {VEL_E2BIG, "Error in Translation (VEL_E2BIG)"},
    };
    const refusal &told = refusals[static_cast<int>(why)];
    vel_diag(told.message);
    return fail(cv, told.number);
}

// The bytes of an entry, with what lies behind them, where there is room for all four.
inline void store_entry(unsigned char *out, uint64_t cell) {
    uint32_t bytes = entry_bytes(cell);
    if constexpr (std::endian::native == std::endian::big) bytes = __builtin_bswap32(bytes);
    memcpy(out, &bytes, sizeof bytes);
}

// The bytes of one entry as the output of a character.
struct one_entry {
    uint64_t cell;

    explicit one_entry(uint64_t from) : cell(from) {}
    int32_t length() const { return static_cast<int32_t>(entry_flags(cell) & entry_length_mask); }
    unsigned char *write(unsigned char *out) const {
        unsigned char bytes[max_character_bytes];
        store_entry(bytes, cell);
        for (int32_t i = 0; i < length(); ++i) *out++ = bytes[i];
        return out;
    }
};

// The states of conversions that have none.
class no_states {
public:
    no_states(const vel_cv *cv, vel_cv_state *) : table_(*cv->table) {}

    bool initial() const { return true; }
    const entry_table &table() const { return table_; }
    one_entry output(uint64_t cell, bool) { return one_entry(cell); }

private:
    const entry_table &table_;
};

template <typename Source, typename States, bool writing> class stepper {
public:
    stepper(vel_cv *cv, vel_cv_state *state, conversion &text)
        : cv_(cv), states_(cv, state), text_(text),
          runs_(cv->runs.kernel && (!text.terminated || only_zero_ends(cv))), next_run_(text.left) {
    }

    int32_t run() {
        while (text_.left > 0) {
            if (states_.initial()) pass_plain();
            if (text_.left <= 0) break;
            bool ended = false;
            outcome result = step(ended);
            if (result != outcome::converted) return refuse(cv_, result);
            if (ended) break;
        }
        return 0;
    }

private:
    static bool only_zero_ends(const vel_cv *cv) {
        return cv->table->zero_ends && !cv->shift_table;
    }

    static constexpr int32_t least_pause = 8;       // between two calls of it, in bytes
    static constexpr int32_t most_pause = 1024;     // the same where it gets nowhere
    static constexpr int32_t terminated_run = 4096; // how far ahead an end is looked for
    static constexpr int32_t measured_run = 1024;

    // Leaves the text before a character that is not plain, or close to the end of input or room.
    void pass_plain() {
        const int32_t least = cv_->runs.least;
        while (runs_ && text_.left >= least && text_.room >= least) {
            if (text_.left - next_run_ < max_character_bytes) pass_run();
            if (!step_plain(text_.left - next_run_)) return;
        }
        step_plain(text_.left);
    }

    // The kernel is left alone for longer and longer where characters that are not plain stop it.
    void pass_run() {
        int32_t read = run_kernel_once();
        pause_ = read >= pause_ ? least_pause : pause_ < most_pause ? pause_ * 2 : pause_;
        next_run_ = text_.left > pause_ ? text_.left - pause_ : 0;
    }

    // The bytes that it read. Of terminated text it sees what lies before the first
    // zero byte: nothing else can end the text, and so none of it lies behind the end.
    int32_t run_kernel_once() {
        int32_t n = text_.left;
        if (text_.terminated) {
            if (n > terminated_run) n = terminated_run;
            const void *zero = memchr(text_.in, 0, static_cast<size_t>(n));
            if (zero) n = static_cast<int32_t>(static_cast<const unsigned char *>(zero) - text_.in);
        }
        run_progress progress = writing ? call(n, text_.out, text_.room) : measure(n);
        text_.in += progress.read;
        text_.left -= static_cast<int32_t>(progress.read);
        if (writing) text_.out += progress.written;
        text_.room -= static_cast<int32_t>(progress.written);
        return static_cast<int32_t>(progress.read);
    }
    run_progress measure(int32_t n) {
        unsigned char scratch[measured_run];
        return call(n, scratch, text_.room < measured_run ? text_.room : measured_run);
    }
    run_progress call(int32_t n, unsigned char *out, int32_t room) {
        return cv_->runs.kernel(*cv_->table, cv_->runs.facts, text_.in, static_cast<size_t>(n), out,
                                static_cast<size_t>(room));
    }

    // Quick steps over about `limit` bytes, as long as characters are plain and neither the input
    // nor the room can end within one. True when there are more such characters.
    bool step_plain(int32_t limit) {
        const Source source(*cv_->table);
        const unsigned char *in = text_.in;
        unsigned char *out = text_.out;
        int32_t room = text_.room;
        bool plain = true;
        for (;;) {
            int32_t characters = source.surely_in(limit);
            if (characters > room / max_character_bytes) characters = room / max_character_bytes;
            if (characters <= 0) break;
            const unsigned char *start = in;
            for (; characters > 0; --characters) {
                const unsigned char *next = in;
                uint64_t cell = source.take(next);
                if (!is_plain(cell)) {
                    plain = false;
                    break;
                }
                uint32_t length = entry_flags(cell) & entry_length_mask;
                if (writing) {
                    store_entry(out, cell);
                    out += length;
                }
                room -= static_cast<int32_t>(length);
                in = next;
            }
            limit -= static_cast<int32_t>(in - start);
            if (!plain) break;
        }
        text_.left -= static_cast<int32_t>(in - text_.in);
        text_.in = in;
        text_.out = out;
        text_.room = room;
        return plain;
    }

    outcome step(bool &ended) {
        entry_walk end = Source::find(states_.table(), text_.in, text_.left);
        if (!is_end(end.cell)) return is_more(end.cell) ? outcome::cut_off : outcome::no_character;
        uint32_t flags = entry_flags(end.cell);
        if (!(flags & entry_flags_mask)) return outcome::illegal;
        if (flags & entry_substitute) text_.substituted = true;
        ended = text_.terminated && (flags & entry_terminator);
        auto output = states_.output(end.cell, ended || end.used == text_.left);
        int32_t length = output.length();
        if (text_.room < (length < cv_->most_asked ? length : cv_->most_asked)) {
            return outcome::no_room;
        }
        if (writing) text_.out = output.write(text_.out);
        text_.room -= length;
        text_.in += end.used;
        text_.left -= end.used;
        return outcome::converted;
    }

    vel_cv *cv_;
    States states_;
    conversion &text_;
    const bool runs_;
    int32_t pause_ = least_pause;
    int32_t next_run_; // what is left when the kernel is called again
};

template <typename Source, typename States, bool writing>
int32_t step_through(vel_cv *cv, vel_cv_state *state, conversion &text) {
    return stepper<Source, States, writing>(cv, state, text).run();
}

template <typename Source, typename States>
constexpr translation translation_by{step_through<Source, States, true>,
                                     step_through<Source, States, false>};

} // namespace vel
