// The body of pairBetween.
#pragma once
#include <algorithm>
#include <cstddef>
#include <vector>

#include "cli/diff/align.h"

namespace cli {

/// Longest common order of a stretch by dynamic programming.
template <class Alike>
void pairAlike(std::vector<int>& partners, int firstA, int endA, int firstB, int endB, Alike& alike) {
    const auto rows = static_cast<std::size_t>(endA - firstA), cols = static_cast<std::size_t>(endB - firstB);
    std::vector<int> best((rows + 1) * (cols + 1));  // of the rests behind (i, j)
    std::vector<char> same(rows * cols);
    for (std::size_t i = rows; i-- > 0;) {
        for (std::size_t j = cols; j-- > 0;) {
            same[i * cols + j] = alike(firstA + static_cast<int>(i), firstB + static_cast<int>(j));
            const int with = same[i * cols + j] ? best[(i + 1) * (cols + 1) + j + 1] + 1 : 0;
            best[i * (cols + 1) + j] = std::max({with, best[(i + 1) * (cols + 1) + j], best[i * (cols + 1) + j + 1]});
        }
    }
    for (std::size_t i = 0, j = 0; i < rows && j < cols;) {
        if (same[i * cols + j] && best[i * (cols + 1) + j] == best[(i + 1) * (cols + 1) + j + 1] + 1) {
            partners[static_cast<std::size_t>(firstA) + i++] = firstB + static_cast<int>(j++);
        } else if (best[(i + 1) * (cols + 1) + j] >= best[i * (cols + 1) + j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
}

template <class Alike>
void pairBetween(std::vector<int>& partners, int sizeB, Alike&& alike) {
    constexpr std::size_t longest = 20000;  // places of the table
    const int size = static_cast<int>(partners.size());
    for (int first = 0, firstB = 0; first < size || firstB < sizeB;) {
        int end = first;
        while (end < size && partners[static_cast<std::size_t>(end)] < 0) ++end;
        const int endB = end < size ? partners[static_cast<std::size_t>(end)] : sizeB;
        const int count = end - first, countB = endB - firstB;
        if (count == countB) {
            for (int i = 0; i < count; ++i) partners[static_cast<std::size_t>(first + i)] = firstB + i;
        } else if (count > 0 && countB > 0 &&
                   static_cast<std::size_t>(count) * static_cast<std::size_t>(countB) <= longest) {
            pairAlike(partners, first, end, firstB, endB, alike);
        }
        first = end + 1;
        firstB = endB + 1;
    }
}

}  // namespace cli
