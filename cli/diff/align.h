// Which lines of two sequences belong together.
#pragma once
#include <cstdint>
#include <span>
#include <vector>

namespace cli {

/// For each element of `a` its partner in `b`, -1 for none; partners ascend. Equal elements are paired: those that are
/// unique on both sides in their longest common order, then what lies between them. Takes time in the order of the
/// lengths, times their logarithm.
std::vector<int> alignEqual(std::span<const std::uint64_t> a, std::span<const std::uint64_t> b);

/// Pairs what is left between paired neighbours: as many on one side as on the other one by one; else those that
/// `alike(i, j)` takes for the same, in the longest common order. Long stretches are left as they are.
template <class Alike>
void pairBetween(std::vector<int>& partners, int sizeB, Alike&& alike);

}  // namespace cli

#include "cli/diff/pair_between.h"
