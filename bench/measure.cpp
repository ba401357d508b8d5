#include "measure.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace bench {
namespace {

effort chosen;

using measurements = std::map<std::string, std::vector<double>>;

double median(std::vector<double> values) {
    auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2) return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

// Collects the processor time of a pass, round by round.
class collector : public benchmark::BenchmarkReporter {
public:
    explicit collector(measurements &into) : into_(into) {}
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
            double each = run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations);
            into_[run.run_name.function_name].push_back(each);
        }
    }

private:
    measurements &into_;
};

void time_passes(const std::vector<contender> &contenders, measurements &into) {
    benchmark::ClearRegisteredBenchmarks();
    for (const contender &one : contenders) {
        auto loop = [pass = one.pass](benchmark::State &state) {
            for (auto _ : state) benchmark::DoNotOptimize(pass());
        };
        benchmark::RegisterBenchmark(one.library.c_str(), loop);
    }
    collector reporter(into);
    benchmark::RunSpecifiedBenchmarks(&reporter, std::string("all"));
}

void take_samples(const std::vector<contender> &contenders, measurements &into) {
    for (int round = 0; round < chosen.fresh_processes; ++round) {
        for (const contender &one : contenders) into[one.library].push_back(one.sample());
    }
}

} // namespace

void set_effort(const effort &wanted) {
    chosen = wanted;
    // Rounds of all libraries of a row are shuffled together.
    std::vector<std::string> words = {"report", "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_repetitions=" + std::to_string(wanted.rounds),
                                      "--benchmark_min_time=" +
                                          std::to_string(wanted.seconds_a_round)};
    static std::vector<char *> arguments;
    for (std::string &word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int count = static_cast<int>(words.size());
    benchmark::Initialize(&count, arguments.data());
}

std::map<std::string, double> measure(const std::vector<contender> &contenders) {
    measurements all;
    bool is_timed = !contenders.empty() && contenders.front().pass;
    (is_timed ? time_passes : take_samples)(contenders, all);
    std::map<std::string, double> medians;
    for (const auto &[name, values] : all) medians[name] = median(values);
    return medians;
}

} // namespace bench
