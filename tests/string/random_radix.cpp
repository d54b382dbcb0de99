// Random conversions between notations, and random bit operations.
#include "tests/string/random_trial.h"

namespace random_strings {
namespace {

constexpr std::size_t longestNumber = 300; ///< Longhand arithmetic takes its time.

void c2x(Trial& r) {
    r.edit(model::c2x(r.m()), [](DString& s) { s.c2x(); });
}
void x2c(Trial& r) {
    r.edit(model::x2c(r.m()), [](DString& s) { s.x2c(); });
}
void c2b(Trial& r) {
    r.edit(model::bitsOf(r.m()), [](DString& s) { s.c2b(); });
}
void b2c(Trial& r) {
    string const expected = model::consistsOf(r.m(), "01") ? model::ofBits(r.m()) : string();
    r.edit(expected, [](DString& s) { s.b2c(); });
}
void c2d(Trial& r) {
    if (r.m().size() <= longestNumber) r.edit(model::c2d(r.m()), [](DString& s) { s.c2d(); });
}
void d2c(Trial& r) {
    if (r.m().size() <= longestNumber) r.edit(model::d2c(r.m()), [](DString& s) { s.d2c(); });
}

void combine(Trial& r) {
    string const& m = r.m();
    string const& operand = r.a.wanted;
    switch (r.below(4)) {
    case 0:
        return r.edit(model::combined(m, operand, [](int x, int y) { return x & y; }),
                      [&](DString& s) { r.as(r.a, [&](auto const& text) { s &= text; }); });
    case 1:
        return r.edit(model::combined(m, operand, [](int x, int y) { return x | y; }),
                      [&](DString& s) { r.as(r.a, [&](auto const& text) { s |= text; }); });
    case 2:
        return r.edit(model::combined(m, operand, [](int x, int y) { return x ^ y; }),
                      [&](DString& s) { r.as(r.a, [&](auto const& text) { s ^= text; }); });
    default:
        return r.edit(model::combined(operand, m, [](int x, int y) { return x ^ y; }),
                      [&](DString& s) { s = r.a.given ^ s; });
    }
}
void combineNewly(Trial& r) {
    string const& m = r.m();
    string const& operand = r.a.wanted;
    r.as(r.a, [&](auto const& text) {
        r.same(operations::contentsOf(r.s() & text),
               model::combined(m, operand, [](int x, int y) { return x & y; }));
        r.same(operations::contentsOf(r.s() | text),
               model::combined(m, operand, [](int x, int y) { return x | y; }));
        r.same(operations::contentsOf(r.s() ^ text),
               model::combined(m, operand, [](int x, int y) { return x ^ y; }));
    });
}
void complement(Trial& r) {
    r.edit(model::combined(r.m(), "\xFF", [](int x, int y) { return x ^ y; }), [](DString& s) { s = ~s; });
}

constexpr Operation operations[] = {{"c2x", c2x},
                                    {"x2c", x2c},
                                    {"c2b", c2b},
                                    {"b2c", b2c},
                                    {"c2d", c2d},
                                    {"d2c", d2c},
                                    {"bit assignment", combine},
                                    {"bit operators", combineNewly},
                                    {"complement", complement}};

} // namespace

std::span<Operation const> radixOperations() { return operations; }

} // namespace random_strings
