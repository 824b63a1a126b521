// The table of results: a line for each case and size, with all vector levels beside each other.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tavik/frame/vector_level.h"

namespace tavik_bench {

// What one line of the table is about.
struct Subject {
    std::string family;
    std::string name;
    std::string size;
    double pixels;
    double bytes; // read plus written for each pixel
    std::string note;
    bool reference = false; // the other lines of its size are compared with its speed
};

// Collects the benchmarks' times and writes the table in Markdown when all are done.
class Table : public benchmark::BenchmarkReporter {
  public:
    // Adds a line; lines that nothing is measured for stay out of the table.
    std::size_t add(const Subject &subject);

    // Says what of a line the benchmark of this name measures.
    enum class Part { level, all_threads, equivalent };
    void expect(const std::string &benchmark, std::size_t line, tavik::VectorLevel level, Part part);

    // Says which call of another library the line is compared with.
    void compare(std::size_t line, const std::string &equivalent) { lines[line].equivalent = equivalent; }

    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

  private:
    struct Line {
        Subject subject;
        std::array<std::optional<double>, tavik::vector_level_names.size()> megapixels; // per second, one thread
        std::optional<double> one_thread_time;                                          // elapsed, best level
        std::optional<double> all_threads_time;                                         // elapsed, best level
        std::string equivalent;                                                         // of another library
        std::optional<double> equivalent_megapixels;                                    // per second, one thread
        bool measured = false;

        std::optional<double> gigabytes() const; // per second, best level
    };

    struct Cell {
        std::size_t line;
        tavik::VectorLevel level;
        Part part;
    };

    std::optional<double> reference_speed(const std::string &size) const;
    std::string bound_of(const Line &line) const;
    void write_heading(const std::string &family) const;
    void write(const Line &line) const;

    std::map<std::string, Cell> expected;
    std::vector<Line> lines;
};

} // namespace tavik_bench
