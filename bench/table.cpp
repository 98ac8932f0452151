#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>

namespace kestrel::bench {

namespace {

/// What a busy machine adds to a median; a row fails beyond it.
constexpr double kMargin = 1.25;

constexpr int kTitleWidth = 48;

/// @return not a number when there is none
double median(std::vector<double> values)
{
    if (values.empty()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// @return what @p combine makes of each pair, as far as both have a value
template <typename Combine>
std::vector<double> roundByRound(const std::vector<double>& a, const std::vector<double>& b,
                                 const Combine& combine)
{
    std::vector<double> combined(std::min(a.size(), b.size()));
    std::transform(a.cbegin(), a.cbegin() + static_cast<std::ptrdiff_t>(combined.size()),
                   b.cbegin(), combined.begin(), combine);
    return combined;
}

/// Pads by characters, not by bytes.
std::string padded(const std::string& text)
{
    const auto characters = std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    });
    const auto missing = std::max<std::ptrdiff_t>(0, kTitleWidth - characters);
    return text + std::string(static_cast<std::size_t>(missing), ' ');
}

std::string number(double value, const char* format)
{
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

void Table::add(const std::string& title, const std::string& job, const Limit& limit)
{
    m_rows.push_back({title, job, limit});
}

bool Table::ReportContext(const Context& /*context*/)
{
    return true;
}

void Table::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(),
                         run.error_message.c_str());
            m_failed = true;
        } else if (run.run_type == Run::RT_Iteration) {
            m_times[run.run_name.function_name +
                    (run.run_name.args.empty() ? "" : "/" + run.run_name.args)]
                .push_back(run.GetAdjustedCPUTime());
        }
    }
}

const std::vector<double>& Table::times(const std::string& job) const
{
    static const std::vector<double> none;
    const auto found = m_times.find(job);
    return found != m_times.end() ? found->second : none;
}

std::vector<double> Table::limits(const Row& row) const
{
    const Limit& limit = row.limit;
    std::vector<double> limits(times(row.job).size(), limit.plus);
    if (!limit.rival.empty()) {
        const auto factors =
            limit.small.empty()
                ? std::vector<double>(limits.size(), limit.factor)
                : roundByRound(times(limit.large), times(limit.small), std::divides<>());
        const auto multiples = roundByRound(times(limit.rival), factors, std::multiplies<>());
        limits = roundByRound(multiples, limits, std::plus<>());
    }
    return limits;
}

bool Table::print() const
{
    std::printf("| %s | measured ms |  rival ms |  limit ms | of limit | verdict |\n",
                padded("row").c_str());
    std::printf("| %s | ----------: | --------: | --------: | -------: | :------ |\n",
                std::string(kTitleWidth, '-').c_str());
    bool good = !m_failed;
    for (const Row& row : m_rows) {
        good = print(row) && good;
    }
    std::printf(
        "\nMedians of the rounds, in processor time; a row and its limit meet in each round. "
        "\"close\": over the limit by less than %.0f %%, which a busy machine makes.\n",
        (kMargin - 1.0) * 100.0);
    return good;
}

bool Table::print(const Row& row) const
{
    const std::vector<double>& measured = times(row.job);
    const std::vector<double> limit = limits(row);
    const double part = median(roundByRound(measured, limit, std::divides<>()));
    const std::string& rival = row.limit.rival;
    // Written so that a benchmark, or a rival, without a time is a miss.
    const bool good = part <= kMargin;
    const char* const verdict = !good ? "MISSED" : part > 1.0 ? "close" : "ok";
    std::printf("| %s | %11.3f | %9s | %9.3f | %6.0f %% | %-7s |\n", padded(row.title).c_str(),
                median(measured), rival.empty() ? "" : number(median(times(rival)), "%.3f").c_str(),
                median(limit), 100.0 * part, verdict);
    return good;
}

} // namespace kestrel::bench
