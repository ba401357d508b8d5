// Rows over many values, a call for each: what all libraries are given, and what each must give.
#pragma once

#include "host_locales.h"
#include "row.h"
#include "scratch.h"

#include <memory>
#include <stdexcept>

namespace bench {

template <typename Value> class value_work {
public:
    // `expected` is what the values come to, in a form that all libraries can be compared in.
    value_work(std::string row, std::vector<Value> values, std::vector<std::string> expected)
        : row_(std::move(row)),
          values_(std::make_shared<const std::vector<Value>>(std::move(values))),
          expected_(std::move(expected)) {}

    // `run(value)` is the call to be timed, `tell(what it gave)` the text to be compared. `locale`
    // is that of the thread meanwhile. Throws at the first value that comes out otherwise.
    template <typename Run, typename Tell>
    void add(const char *library, Run run, Tell tell, locale_t locale = nullptr) {
        thread_locale used(locale);
        for (std::size_t i = 0; i < values_->size(); ++i) {
            spoil_output();
            std::string got = tell(run((*values_)[i]));
            if (got == expected_[i]) continue;
            throw std::runtime_error(row_ + ": " + library + " gives \"" + got + "\", not \"" +
                                     expected_[i] + '"');
        }
        auto pass = [values = values_, run, locale] {
            thread_locale used_in_pass(locale);
            std::int64_t sum = 0;
            for (const Value &value : *values) sum += static_cast<std::int64_t>(run(value));
            return sum;
        };
        contenders_.push_back({library, pass, nullptr});
    }

    prepared_row ready() const { return {static_cast<double>(values_->size()), contenders_}; }

private:
    // So that nobody passes with what another library left behind.
    static void spoil_output() {
        auto *out = scratch_for<unsigned char>();
        for (int i = 0; i < 512; ++i) out[i] = 0xA5;
    }

    std::string row_;
    std::shared_ptr<const std::vector<Value>> values_;
    std::vector<std::string> expected_;
    std::vector<contender> contenders_;
};

// What `run` and `tell` come to for each value: the expectation by which the others are measured.
template <typename Value, typename Run, typename Tell>
std::vector<std::string> results_of(const std::vector<Value> &values, Run run, Tell tell,
                                    locale_t locale) {
    thread_locale used(locale);
    std::vector<std::string> results;
    for (const Value &value : values) results.push_back(tell(run(value)));
    return results;
}

} // namespace bench
