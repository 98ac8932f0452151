#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace kestrel::bench {

namespace {

/// What a busy machine adds to a median; a row fails beyond it.
constexpr double kMargin = 1.25;

constexpr int kTitleWidth = 48;

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

double Table::median(const std::string& job) const
{
    const auto found = m_times.find(job);
    if (found == m_times.end()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    std::vector<double> times = found->second;
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
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
        "\nMedians of processor time. \"close\": over the limit by less than %.0f %%, which "
        "a busy machine makes.\n",
        (kMargin - 1.0) * 100.0);
    return good;
}

bool Table::print(const Row& row) const
{
    const double measured = median(row.job);
    const bool hasRival = !row.limit.rival.empty();
    const double rival = hasRival ? median(row.limit.rival) : 0.0;
    const double factor = row.limit.small.empty()
                              ? row.limit.factor
                              : median(row.limit.large) / median(row.limit.small);
    const double limit = rival * factor + row.limit.plus;
    // Written so that a benchmark, or a rival, without a time is a miss.
    const bool good = measured <= limit * kMargin;
    const char* const verdict = !good ? "MISSED" : measured > limit ? "close" : "ok";
    std::printf("| %s | %11.3f | %9s | %9.3f | %6.0f %% | %-7s |\n", padded(row.title).c_str(),
                measured, hasRival ? number(rival, "%.3f").c_str() : "", limit,
                100.0 * measured / limit, verdict);
    return good;
}

} // namespace kestrel::bench
