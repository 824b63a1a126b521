// Measures every case at every vector level, on a large picture and on one that fits in the cache of one core.

#include <benchmark/benchmark.h>
#include <tbb/global_control.h>
#include <tbb/info.h>

#include <array>
#include <cstring>
#include <deque>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "bench/support/cases.h"
#include "bench/support/equivalents.h"
#include "bench/support/table.h"
#include "tests/support/vector_level.h"

using namespace tavik_bench;

namespace {

struct Size {
    std::string name;
    PictureBuffers buffers;

    Size(int32_t width, int32_t height)
        : name(std::to_string(width) + 'x' + std::to_string(height)), buffers(width, height) {}
};

struct Way {
    tavik::VectorLevel level;
    bool in_place;
    bool all_threads;
};

// What moving memory costs in this run.
const Case copy_plane = {
    "memcpy", {.bytes = 2}, [](const Picture &p) { std::memcpy(p.to_r, p.r, static_cast<std::size_t>(p.count())); }};

double pixels_of(const Case &item, const Picture &picture) {
    return static_cast<double>(picture.width) * (item.traits.rows != 0 ? item.traits.rows : picture.height);
}

void measure(benchmark::State &state, const Case &item, PictureBuffers &buffers, Way way) {
    const std::size_t threads = way.all_threads ? static_cast<std::size_t>(tbb::info::default_concurrency()) : 1;
    const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, threads);
    tavik_test::set_active_level(way.level);
    buffers.refresh();
    const Picture picture = way.in_place ? buffers.in_place() : buffers.picture();
    for ([[maybe_unused]] auto iteration : state) {
        item.call(picture);
        benchmark::ClobberMemory();
    }
    using benchmark::Counter;
    const double pixels = pixels_of(item, picture);
    state.counters["megapixels/s"] = Counter(pixels * 1e-6, Counter::kIsIterationInvariantRate);
    state.counters["GB/s"] = Counter(pixels * item.traits.bytes * 1e-9, Counter::kIsIterationInvariantRate);
}

class Measurements {
  public:
    Measurements(Table &results, std::deque<Size> &picture_sizes) : table(results), sizes(picture_sizes) {}

    void add_reference() {
        for (Size &size : sizes) {
            const std::size_t line = table.add(subject("reference", copy_plane, size, false));
            add("reference/" + copy_plane.name + '/' + size.name, copy_plane, size, line,
                {tavik::supported_level(), false, false}, Table::Part::level);
        }
    }

    void add(const Family &family) {
        for (const Case &item : family.cases) {
            for (Size &size : sizes) add_levels(family, item, size, false);
            if (!item.traits.in_place_too) continue;
            for (Size &size : sizes) add_levels(family, item, size, true);
        }
    }

  private:
    static Subject subject(const std::string &family, const Case &item, const Size &size, bool in_place) {
        return {.family = family,
                .name = item.name + (in_place ? ", in place" : ""),
                .size = size.name,
                .pixels = pixels_of(item, size.buffers.picture()),
                .bytes = item.traits.bytes,
                .note = item.traits.note,
                .reference = &item == &copy_plane};
    }

    void add_levels(const Family &family, const Case &item, Size &size, bool in_place) {
        const Subject what = subject(family.name, item, size, in_place);
        const std::size_t line = table.add(what);
        const std::string name = what.family + '/' + what.name + '/' + what.size + '/';
        for (const auto level : tavik_test::supported_levels())
            add(name + std::string(tavik_test::name_of(level)), item, size, line, {level, in_place, false},
                Table::Part::level);
        if (in_place) return;
        if (item.traits.parallel)
            add(name + "parallel", item, size, line, {tavik::supported_level(), false, true}, Table::Part::all_threads);
        for (const Equivalent &equivalent : equivalents()) {
            if (equivalent.case_name != item.name) continue;
            const Case &other = others.emplace_back(Case{equivalent.name, item.traits, equivalent.call});
            table.compare(line, equivalent.name);
            add(name + "equivalent", other, size, line, {tavik::supported_level(), false, false},
                Table::Part::equivalent);
        }
    }

    void add(const std::string &name, const Case &item, Size &size, std::size_t line, Way way, Table::Part part) {
        table.expect(name, line, way.level, part);
        benchmark::RegisterBenchmark(
            name.c_str(), [&item, &size, way](benchmark::State &state) { measure(state, item, size.buffers, way); });
    }

    Table &table;
    std::deque<Size> &sizes;
    std::deque<Case> others; // the equivalents, which stay where they are
};

// Repetitions in random order spread a disturbance over all levels. Later arguments replace earlier ones.
std::vector<char *> with_defaults(int argc, char **argv) {
    static std::array<std::string, 3> defaults = {"--benchmark_enable_random_interleaving=true",
                                                  "--benchmark_repetitions=5", "--benchmark_min_time=0.02"};
    std::vector<char *> arguments = {argv[0]};
    for (std::string &argument : defaults) arguments.push_back(argument.data());
    std::copy(argv + 1, argv + argc, std::back_inserter(arguments));
    return arguments;
}

} // namespace

int main(int argc, char **argv) {
    auto arguments = with_defaults(argc, argv);
    auto argument_count = static_cast<int>(arguments.size());
    benchmark::Initialize(&argument_count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(argument_count, arguments.data())) return 2;

    std::deque<Size> sizes;
    sizes.emplace_back(4096, 3072);
    sizes.emplace_back(256, 192);
    Table table;
    Measurements measurements(table, sizes);
    measurements.add_reference();
    for (const Family *family : families()) measurements.add(*family);

    const std::string filter = benchmark::GetBenchmarkFilter();
    if (!filter.empty()) benchmark::SetBenchmarkFilter("^reference/|" + filter);
    const std::size_t matched = benchmark::RunSpecifiedBenchmarks(&table);
    if (matched <= sizes.size()) {
        std::cerr << "tavik_bench: no benchmark's name matches " << filter << '\n';
        return 1;
    }
}
