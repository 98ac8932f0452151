/// @file
/// The one table that the program prints: each row a measured time beside its limit or rival.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace kestrel::bench {

/// What a row may take. Times are milliseconds of processor time.
struct Limit
{
    std::string rival;   ///< benchmark that the limit is a multiple of; empty: none
    double factor = 0.0; ///< how many times the rival
    double plus = 0.0;   ///< added to that; alone the limit of a row without rival
    std::string small;   ///< the factor is how much longer `large` takes than this one;
    std::string large;   ///< empty: it is `factor`
};

/// At most so many milliseconds.
inline Limit atMost(double milliseconds)
{
    return {{}, 0.0, milliseconds, {}, {}};
}
/// At most @p factor times the rival, and @p plus milliseconds.
inline Limit against(const std::string& rival, double factor, double plus = 0.0)
{
    return {rival, factor, plus, {}, {}};
}
/// Grows from @p rival on no more than another job does from @p small to @p large.
inline Limit growingLike(const std::string& rival, const std::string& small,
                         const std::string& large)
{
    return {rival, 0.0, 0.0, small, large};
}

/// How much longer a walk over all keys may take for ten times as many: the toolkit keeps them in a
/// tree and lists them sorted, so each of 64,000 costs log(64,000) / log(6,400) times one of 6,400.
constexpr double kTenfoldKeys = 12.6;

struct Row
{
    std::string title;
    std::string job; ///< name of the benchmark
    Limit limit;
};

/// Collects every round of every benchmark and reports the medians, row by row.
class Table : public benchmark::BenchmarkReporter
{
public:
    void add(const std::string& title, const std::string& job, const Limit& limit);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints the table.
    /// @return whether every row was measured, and none has clearly missed its limit
    bool print() const;

private:
    /// Milliseconds of each round; nothing of a benchmark that did not run.
    const std::vector<double>& times(const std::string& job) const;
    /// @return what the row may take in each round, out of what its rival took in the same one
    std::vector<double> limits(const Row& row) const;
    /// @return whether the row is good
    bool print(const Row& row) const;

    std::vector<Row> m_rows;
    std::map<std::string, std::vector<double>> m_times; ///< milliseconds, by benchmark
    bool m_failed = false;
};

} // namespace kestrel::bench
