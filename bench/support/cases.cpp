#include "bench/support/cases.h"

#include <algorithm>
#include <utility>

namespace tavik_bench {
namespace {

std::vector<const Family *> &declared() {
    static std::vector<const Family *> list;
    return list;
}

} // namespace

Family::Family(std::string family_name, std::span<const Case> family_cases)
    : name(std::move(family_name)), cases(family_cases) {
    declared().push_back(this);
}

std::vector<const Family *> families() {
    std::vector<const Family *> list = declared();
    std::ranges::sort(list, {}, &Family::name);
    return list;
}

} // namespace tavik_bench
