// Finding the part of a destination row whose source positions are inside the source.
#pragma once

#include <cstdint>

namespace tavik {

// Destination columns [begin, end).
struct ColumnSpan {
    int32_t begin;
    int32_t end;
};

// The columns of a span between those that are below and those that are above, for a coordinate that never falls along
// the span (`rises`) or never rises.
template <class Below, class Above>
ColumnSpan between(ColumnSpan span, bool rises, const Below &is_below, const Above &is_above) {
    if (span.begin >= span.end) return span;
    const auto is_outside = [&](int32_t x) { return is_below(x) || is_above(x); };
    if (!is_outside(span.begin) && !is_outside(span.end - 1)) return span;
    // The property holds up to some column and no further.
    const auto first_without = [&](int32_t begin, const auto &property) {
        int32_t end = span.end;
        while (begin < end) {
            const int32_t middle = begin + (end - begin) / 2;
            if (property(middle))
                begin = middle + 1;
            else
                end = middle;
        }
        return begin;
    };
    if (rises) {
        const int32_t begin = first_without(span.begin, is_below);
        return {begin, first_without(begin, [&](int32_t x) { return !is_above(x); })};
    }
    const int32_t begin = first_without(span.begin, is_above);
    return {begin, first_without(begin, [&](int32_t x) { return !is_below(x); })};
}

// Calls body(columns, is_inside) for the runs of equal insideness of a span, from the left.
template <class Inside, class Body> void for_each_run(ColumnSpan span, const Inside &inside, const Body &body) {
    for (int32_t x = span.begin; x < span.end;) {
        const int32_t begin = x;
        const bool is_inside = inside(begin);
        do ++x;
        while (x < span.end && inside(x) == is_inside);
        body(ColumnSpan{begin, x}, is_inside);
    }
}

} // namespace tavik
