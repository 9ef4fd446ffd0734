// Holds a piece of the program's work against the limit that it could reach, both measured in one process.
#pragma once

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace vantrel {

/// Microseconds of CPU time that the process has taken: what others do on the machine does not count.
inline double CpuTime() {
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// Has `value` worked out, though nothing is done with it.
template <class T>
void Keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

/// The value that the part `share` (0 to 1) of `values` lies below; 0.5 is the median.
inline double Quantile(std::vector<double> values, double share) {
    const auto place =
        std::min(values.size() - 1, static_cast<std::size_t>(share * static_cast<double>(values.size())));
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(place), values.end());
    return values[place];
}

/// What the work cost and what its limit did, taken in turn.
struct Pairs {
    std::vector<double> work;
    std::vector<double> limit;

    void Add(double work_cost, double limit_cost) {
        work.push_back(work_cost);
        limit.push_back(limit_cost);
    }
    /// How many times the limit the work takes, in the pair at the part `share` of all.
    double Ratio(double share) const {
        std::vector<double> ratios;
        for (std::size_t i = 0; i < work.size(); ++i) ratios.push_back(work[i] / limit[i]);
        return Quantile(ratios, share);
    }
};

/// CPU times in microseconds of `work` and `limit`, `rounds` times in turn after a first time that does not count.
/// What `prepare` and `prepare_limit` do before each is not measured.
template <class Prepare, class Work, class PrepareLimit, class Limit>
Pairs InTurn(int rounds, const Prepare& prepare, const Work& work, const PrepareLimit& prepare_limit,
             const Limit& limit) {
    Pairs pairs;
    for (int i = 0; i <= rounds; ++i) {
        prepare();
        const double start = CpuTime();
        work();
        const double worked = CpuTime() - start;
        prepare_limit();
        const double start_of_limit = CpuTime();
        limit();
        if (i > 0) pairs.Add(worked, CpuTime() - start_of_limit);
    }
    return pairs;
}

template <class Work, class Limit>
Pairs InTurn(int rounds, const Work& work, const Limit& limit) {
    return InTurn(
        rounds, [] {}, work, [] {}, limit);
}

/// A line of the table: its number, the piece of work, what it is held against, and the ratio that is the goal.
struct Line {
    int number;
    std::string what;
    std::string against;
    double goal;
};

inline std::string Microseconds(double time) {
    char text[32];
    if (time < 1e3)
        std::snprintf(text, sizeof text, "%.0f us", time);
    else
        std::snprintf(text, sizeof text, time < 1e5 ? "%.2f ms" : "%.0f ms", time / 1e3);
    return text;
}

/// Prints the line: the medians in the form that `unit` gives them, the ratio, and between which two ratios the middle
/// half of the pairs lies.
template <class Unit = std::string (*)(double)>
void Print(const Line& line, const Pairs& pairs, const Unit& unit = Microseconds) {
    std::printf("| %d | %s | %s | %s | %s | %.2f | %.2f to %.2f | %.2f |\n", line.number, line.what.c_str(),
                unit(Quantile(pairs.work, 0.5)).c_str(), line.against.c_str(), unit(Quantile(pairs.limit, 0.5)).c_str(),
                pairs.Ratio(0.5), pairs.Ratio(0.25), pairs.Ratio(0.75), line.goal);
    std::fflush(stdout);
}

/// Prints a point of a curve, medians in microseconds: `curve,x,work,limit`.
inline void PrintPoint(const std::string& curve, double x, const Pairs& pairs) {
    std::printf("%s,%.0f,%.1f,%.1f\n", curve.c_str(), x, Quantile(pairs.work, 0.5), Quantile(pairs.limit, 0.5));
    std::fflush(stdout);
}

}  // namespace vantrel
