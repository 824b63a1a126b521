#include "bench/support/table.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "tests/support/vector_level.h"

namespace tavik_bench {
namespace {

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

std::string number(std::optional<double> value, int decimals) {
    if (!value) return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(decimals) << *value;
    return text.str();
}

std::string speed(std::optional<double> megapixels) { return number(megapixels, megapixels < 10.0 ? 2 : 0); }

std::optional<double> ratio(std::optional<double> a, std::optional<double> b) {
    if (!a || !b) return std::nullopt;
    return *a / *b;
}

constexpr std::size_t scalar = static_cast<std::size_t>(tavik::VectorLevel::scalar);

std::size_t best() { return static_cast<std::size_t>(tavik::supported_level()); }

} // namespace

std::optional<double> Table::Line::gigabytes() const {
    if (!megapixels[best()]) return std::nullopt;
    return *megapixels[best()] * subject.bytes / 1000.0;
}

std::size_t Table::add(const Subject &subject) {
    lines.emplace_back().subject = subject;
    return lines.size() - 1;
}

void Table::expect(const std::string &benchmark, std::size_t line, tavik::VectorLevel level, Part part) {
    expected.emplace(benchmark, Cell{line, level, part});
}

bool Table::ReportContext(const Context & /*context*/) {
    GetErrorStream() << "measuring; everything takes about three minutes\n";
    return true;
}

void Table::ReportRuns(const std::vector<Run> &runs) {
    std::vector<double> processor_times;
    std::vector<double> elapsed_times;
    for (const Run &run : runs) {
        if (run.run_type != Run::RT_Iteration) continue;
        const double units = benchmark::GetTimeUnitMultiplier(run.time_unit);
        processor_times.push_back(run.GetAdjustedCPUTime() / units);
        elapsed_times.push_back(run.GetAdjustedRealTime() / units);
    }
    if (processor_times.empty()) return;

    const Cell &cell = expected.at(runs.front().run_name.function_name);
    Line &line = lines[cell.line];
    line.measured = true;
    if (cell.part == Part::all_threads) {
        line.all_threads_time = median(elapsed_times);
        return;
    }
    // Time that the processor spends on other programs says nothing about the code.
    const double megapixels = line.subject.pixels / median(processor_times) * 1e-6;
    if (cell.part == Part::equivalent) {
        line.equivalent_megapixels = megapixels;
        return;
    }
    const auto level = static_cast<std::size_t>(cell.level);
    line.megapixels[level] = megapixels;
    if (level == best()) line.one_thread_time = median(elapsed_times);
}

std::optional<double> Table::reference_speed(const std::string &size) const {
    for (const Line &line : lines)
        if (line.subject.reference && line.subject.size == size) return line.gigabytes();
    return std::nullopt;
}

std::string Table::bound_of(const Line &line) const {
    const auto of_memcpy = ratio(line.gigabytes(), reference_speed(line.subject.size));
    if (!of_memcpy) return "";
    if (*of_memcpy >= 0.7) return "memory";
    for (const Line &other : lines) {
        const bool is_same_case =
            other.subject.family == line.subject.family && other.subject.name == line.subject.name;
        if (is_same_case && other.subject.pixels < line.subject.pixels) {
            const auto of_small = ratio(line.megapixels[best()], other.megapixels[best()]);
            if (of_small) return *of_small >= 0.75 ? "arithmetic" : "misses";
        }
    }
    return "arithmetic";
}

void Table::write_heading(const std::string &family) const {
    std::ostream &out = GetOutputStream();
    std::string rule = "|---|---|";
    out << "\n## " << family << "\n\n| export | size |";
    for (const auto level : tavik_test::supported_levels()) {
        out << ' ' << tavik_test::name_of(level) << " |";
        rule += "--:|";
    }
    out << " ratio | GB/s | of memcpy | bound by | parallel | OpenCV | × OpenCV | note |\n"
        << rule << "--:|--:|--:|---|--:|--:|--:|---|\n";
}

void Table::write(const Line &line) const {
    std::ostream &out = GetOutputStream();
    out << "| " << line.subject.name << " | " << line.subject.size << " |";
    for (const auto level : tavik_test::supported_levels())
        out << ' ' << speed(line.megapixels[static_cast<std::size_t>(level)]) << " |";
    out << ' ' << number(ratio(line.megapixels[best()], line.megapixels[scalar]), 1) << " | "
        << number(line.gigabytes(), 1) << " | "
        << number(ratio(line.gigabytes(), reference_speed(line.subject.size)), 2) << " | " << bound_of(line) << " | "
        << number(ratio(line.one_thread_time, line.all_threads_time), 2) << " | " << speed(line.equivalent_megapixels)
        << (line.equivalent_megapixels ? " " + line.equivalent : "") << " | "
        << number(ratio(line.megapixels[best()], line.equivalent_megapixels), 1) << " | " << line.subject.note
        << " |\n";
}

void Table::Finalize() {
    const auto top = tavik_test::name_of(tavik::supported_level());
    GetOutputStream() << "Megapixels per second of processor time on one thread, at each vector level: medians of one "
                         "run.\n\n"
                      << "- ratio: " << top << " / scalar\n- GB/s: read plus written, " << top
                      << "\n- of memcpy: that speed / the speed of memcpy on a channel plane of the same size\n"
                      << "- bound by: memory, where that is 0.7 or more; else arithmetic, unless large pictures take a "
                         "third longer a pixel than those in cache, which they do where cache misses stop them\n"
                      << "- parallel: time on one thread / on " << benchmark::CPUInfo::Get().num_cpus
                      << ", elapsed, best level\n"
                      << "- OpenCV: the call that does the same or nearly so, on one thread, and " << top
                      << " / its speed\n";
    std::string family;
    for (const Line &line : lines) {
        if (!line.measured) continue;
        if (line.subject.family != family) {
            family = line.subject.family;
            write_heading(family);
        }
        write(line);
    }
}

} // namespace tavik_bench
