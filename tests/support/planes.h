// Planes of pictures, and calls of exports that take every plane as an argument of its own.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <random>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace tavik_test {

using Bytes = std::vector<uint8_t>;
using Floats = std::vector<float>;
using Planes = std::array<Bytes, 3>;

inline std::size_t area(int32_t width, int32_t height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

inline Planes planes_of(std::size_t count, uint8_t value = 0) {
    return {Bytes(count, value), Bytes(count, value), Bytes(count, value)};
}

// Random samples, the same ones for each count and seed.
inline Bytes noise(std::size_t count, uint32_t seed) {
    Bytes samples(count);
    std::mt19937 random(seed);
    for (uint8_t &sample : samples) sample = static_cast<uint8_t>(random());
    return samples;
}

// 10x + y, 10y + x and 7xy.
inline Planes ramp_planes(int32_t width, int32_t height) {
    Planes planes;
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            for (std::size_t c = 0; c < 3; ++c)
                planes[c].push_back(static_cast<uint8_t>(std::array{10 * x + y, 10 * y + x, 7 * x * y}[c]));
    return planes;
}

template <class Sample>
std::vector<Sample> row_of(const std::vector<Sample> &plane, std::ptrdiff_t y, std::ptrdiff_t width) {
    return {plane.begin() + y * width, plane.begin() + (y + 1) * width};
}

// A number that changes with any bit of the samples, where too many are checked to be listed.
template <class Sample> uint32_t folded(const std::vector<Sample> &samples, uint32_t hash = 2166136261U) {
    for (const Sample sample : samples) {
        if constexpr (sizeof sample == 1)
            hash = (hash ^ sample) * 16777619U;
        else
            hash = (hash ^ std::bit_cast<uint32_t>(sample)) * 16777619U;
    }
    return hash;
}
template <class Sample, std::size_t n>
uint32_t folded(const std::array<std::vector<Sample>, n> &planes, uint32_t hash = 2166136261U) {
    for (const auto &plane : planes) hash = folded(plane, hash);
    return hash;
}

// Each element of an array, the data of a vector, or what it is.
template <class Argument> auto as_arguments(Argument &&argument) {
    using Kind = std::remove_cvref_t<Argument>;
    if constexpr (std::is_bounded_array_v<Kind>) {
        const auto joined = [&]<std::size_t... i>(std::index_sequence<i...>) {
            return std::tuple_cat(as_arguments(argument[i])...);
        };
        return joined(std::make_index_sequence<std::extent_v<Kind>>());
    } else if constexpr (requires { std::tuple_size<Kind>::value; }) {
        return std::apply([](auto &...elements) { return std::tuple_cat(as_arguments(elements)...); }, argument);
    } else if constexpr (requires { argument.data(); }) {
        return std::tuple(argument.data());
    } else {
        return std::tuple(argument);
    }
}

// call(xHue, width, height, 30, 1, 1, planes): an array stands for as many arguments as it has elements.
template <class Export, class... Arguments> auto call(Export &&function, Arguments &&...arguments) {
    return std::apply(function, std::tuple_cat(as_arguments(arguments)...));
}

// A record of those fields.
template <class Record, class... Fields> Record record(Fields &&...fields) {
    return std::apply([](auto... field) { return Record{field...}; }, std::tuple_cat(as_arguments(fields)...));
}

} // namespace tavik_test
