// The letters that have two cases.
#include "host/platform/inside/casemap.h"

namespace qrs::platform {

namespace {

// Every step-th code point from first to last has its upper case delta further on. One-way rows are second spellings
// (final sigma, title-case digraphs): the upper case of theirs goes down to the usual letter instead.
struct CaseRange {
    char32_t first;
    char32_t last;
    char32_t step;
    int delta;
    bool oneWay;
};

// ASCII, Latin, Greek, Cyrillic, Armenian, roman numerals, letters in circles, full-width letters; by first code point.
constexpr CaseRange kCaseRanges[] = {
    {0x0061, 0x007A, 1, -32, false},  {0x00E0, 0x00F6, 1, -32, false}, {0x00F8, 0x00FE, 1, -32, false},
    {0x00FF, 0x00FF, 1, 121, false},  {0x0101, 0x012F, 2, -1, false},  {0x0133, 0x0137, 2, -1, false},
    {0x013A, 0x0148, 2, -1, false},   {0x014B, 0x0177, 2, -1, false},  {0x017A, 0x017E, 2, -1, false},
    {0x0180, 0x0180, 1, 195, false},  {0x0183, 0x0185, 2, -1, false},  {0x0188, 0x0188, 1, -1, false},
    {0x018C, 0x018C, 1, -1, false},   {0x0192, 0x0192, 1, -1, false},  {0x0195, 0x0195, 1, 97, false},
    {0x0199, 0x0199, 1, -1, false},   {0x019A, 0x019A, 1, 163, false}, {0x019E, 0x019E, 1, 130, false},
    {0x01A1, 0x01A5, 2, -1, false},   {0x01A8, 0x01A8, 1, -1, false},  {0x01AD, 0x01AD, 1, -1, false},
    {0x01B0, 0x01B0, 1, -1, false},   {0x01B4, 0x01B6, 2, -1, false},  {0x01B9, 0x01B9, 1, -1, false},
    {0x01BD, 0x01BD, 1, -1, false},   {0x01BF, 0x01BF, 1, 56, false},  {0x01C5, 0x01C5, 1, -1, true},
    {0x01C6, 0x01C6, 1, -2, false},   {0x01C8, 0x01C8, 1, -1, true},   {0x01C9, 0x01C9, 1, -2, false},
    {0x01CB, 0x01CB, 1, -1, true},    {0x01CC, 0x01CC, 1, -2, false},  {0x01CE, 0x01DC, 2, -1, false},
    {0x01DD, 0x01DD, 1, -79, false},  {0x01DF, 0x01EF, 2, -1, false},  {0x01F2, 0x01F2, 1, -1, true},
    {0x01F3, 0x01F3, 1, -2, false},   {0x01F5, 0x01F5, 1, -1, false},  {0x01F9, 0x021F, 2, -1, false},
    {0x0223, 0x0233, 2, -1, false},   {0x023C, 0x023C, 1, -1, false},  {0x023F, 0x0240, 1, 10815, false},
    {0x0242, 0x0242, 1, -1, false},   {0x0247, 0x024F, 2, -1, false},  {0x0371, 0x0373, 2, -1, false},
    {0x0377, 0x0377, 1, -1, false},   {0x037B, 0x037D, 1, 130, false}, {0x03AC, 0x03AC, 1, -38, false},
    {0x03AD, 0x03AF, 1, -37, false},  {0x03B1, 0x03C1, 1, -32, false}, {0x03C2, 0x03C2, 1, -31, true},
    {0x03C3, 0x03CB, 1, -32, false},  {0x03CC, 0x03CC, 1, -64, false}, {0x03CD, 0x03CE, 1, -63, false},
    {0x03D0, 0x03D0, 1, -62, true},   {0x03D1, 0x03D1, 1, -57, true},  {0x03D5, 0x03D5, 1, -47, true},
    {0x03D6, 0x03D6, 1, -54, true},   {0x03D7, 0x03D7, 1, -8, false},  {0x03D9, 0x03EF, 2, -1, false},
    {0x03F0, 0x03F0, 1, -86, true},   {0x03F1, 0x03F1, 1, -80, true},  {0x03F2, 0x03F2, 1, 7, false},
    {0x03F3, 0x03F3, 1, -116, false}, {0x03F5, 0x03F5, 1, -96, true},  {0x03F8, 0x03F8, 1, -1, false},
    {0x03FB, 0x03FB, 1, -1, false},   {0x0430, 0x044F, 1, -32, false}, {0x0450, 0x045F, 1, -80, false},
    {0x0461, 0x0481, 2, -1, false},   {0x048B, 0x04BF, 2, -1, false},  {0x04C2, 0x04CE, 2, -1, false},
    {0x04CF, 0x04CF, 1, -15, false},  {0x04D1, 0x052F, 2, -1, false},  {0x0561, 0x0586, 1, -48, false},
    {0x1E01, 0x1E95, 2, -1, false},   {0x1E9B, 0x1E9B, 1, -59, true},  {0x1EA1, 0x1EFF, 2, -1, false},
    {0x2170, 0x217F, 1, -16, false},  {0x24D0, 0x24E9, 1, -26, false}, {0xFF41, 0xFF5A, 1, -32, false},
};

// From each letter to the other one.
constexpr void enter(CaseTable& upper, CaseTable& lower, char32_t small, const CaseRange& range) {
    const auto capital = static_cast<char32_t>(static_cast<int>(small) + range.delta);
    upper.enter(small, capital);
    // Of several small letters of one capital the first is the usual one.
    if (!range.oneWay && lower.map(capital) == capital) lower.enter(capital, small);
}

struct CaseTables {
    CaseTable upper;
    CaseTable lower;
};

constexpr CaseTables makeTables() {
    CaseTables tables;
    for (const CaseRange& range : kCaseRanges)
        for (char32_t small = range.first; small <= range.last; small += range.step)
            enter(tables.upper, tables.lower, small, range);
    return tables;
}

constexpr CaseTables kTables = makeTables();

}  // namespace

const CaseTable kUpperCase = kTables.upper;
const CaseTable kLowerCase = kTables.lower;

}  // namespace qrs::platform
