#include "engine/runtime/fold.h"

namespace goodsbook::engine {
namespace {

// A run of capitals and the way to their small letters: by a fixed distance, or as neighbours where capitals
// stand at even (step 2, parity 0) or odd code points.
struct CaseRun {
  char32_t first;
  char32_t last;
  std::int32_t distance;  // 0 for neighbours
};

constexpr std::array<CaseRun, 26> capitals{{
    {'A', 'Z', 32},       {0xc0, 0xd6, 32},   {0xd8, 0xde, 32},     {0x100, 0x12e, 0},   {0x132, 0x136, 0},
    {0x139, 0x147, 0},    {0x14a, 0x176, 0},  {0x178, 0x178, -121}, {0x179, 0x17d, 0},   {0x1cd, 0x1db, 0},
    {0x1de, 0x1ee, 0},    {0x1f8, 0x21e, 0},  {0x222, 0x232, 0},    {0x386, 0x386, 38},  {0x388, 0x38a, 37},
    {0x38c, 0x38c, 64},   {0x38e, 0x38f, 63}, {0x391, 0x3a1, 32},   {0x3a3, 0x3ab, 32},  {0x400, 0x40f, 80},
    {0x410, 0x42f, 32},   {0x460, 0x480, 0},  {0x48a, 0x4be, 0},    {0x1e00, 0x1e94, 0}, {0x2160, 0x216f, 16},
    {0xff21, 0xff3a, 32},
}};

bool isNeighbourCapital(const CaseRun& run, char32_t c) {
  return ((c - run.first) & 1) == 0;
}

std::uint8_t rankOf(unsigned c) {
  if (c == ' ') return 0;
  if (c >= '0' && c <= '9') return 2;
  if (c >= 'a' && c <= 'z') return 3;
  return 1;
}

std::array<std::uint8_t, 128> makeWeights() {
  std::array<std::uint8_t, 128> weights{};
  std::uint8_t next = 0;
  for (std::uint8_t rank = 0; rank < 4; ++rank)
    for (unsigned c = 0; c < 128; ++c)
      if (rankOf(c) == rank && (c < 'A' || c > 'Z')) weights[c] = next++;
  for (unsigned c = 'A'; c <= 'Z'; ++c) weights[c] = weights[c + 32];
  return weights;
}

}  // namespace

char32_t lowerCharacter(char32_t c) {
  if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 32 : c;
  for (const CaseRun& run : capitals) {
    if (c < run.first || c > run.last) continue;
    if (run.distance == 0) return isNeighbourCapital(run, c) ? c + 1 : c;
    return static_cast<char32_t>(static_cast<std::int32_t>(c) + run.distance);
  }
  return c;
}

char32_t upperCharacter(char32_t c) {
  if (c < 0x80) return c >= 'a' && c <= 'z' ? c - 32 : c;
  if (c == 0x3c2) return 0x3a3;
  for (const CaseRun& run : capitals) {
    const auto capital =
        static_cast<char32_t>(static_cast<std::int32_t>(c) - (run.distance == 0 ? 1 : run.distance));
    if (capital < run.first || capital > run.last) continue;
    if (run.distance != 0 || isNeighbourCapital(run, capital)) return capital;
  }
  return c;
}

char32_t foldCharacter(char32_t c) {
  if (c >= 0xff01 && c <= 0xff5e)
    c -= 0xfee0;  // full width
  else if (c == 0x3000)
    c = ' ';
  else if (c == 0x3c2)
    c = 0x3c3;  // final sigma
  return lowerCharacter(c);
}

const std::array<std::uint8_t, 128>& asciiWeights() {
  static const std::array<std::uint8_t, 128> weights = makeWeights();
  return weights;
}

char32_t weightOf(char32_t c) {
  const char32_t folded = foldCharacter(c);
  return folded < 0x80 ? asciiWeights()[folded] : folded;
}

}  // namespace goodsbook::engine
