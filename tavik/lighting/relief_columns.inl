// Calls body(left, x, right) for each column with the columns beside it, the edges' own beyond them. The inner columns
// are one plain loop. Include it inside a rows file.
template <class Body> inline void for_each_column(int32_t width, const Body &body) {
    const std::ptrdiff_t last = width - 1;
    body(std::ptrdiff_t{0}, std::ptrdiff_t{0}, std::min<std::ptrdiff_t>(1, last));
    TAVIK_INDEPENDENT
    for (std::ptrdiff_t x = 1; x < last; ++x) body(x - 1, x, x + 1);
    if (last > 0) body(last - 1, last, last);
}
