#include "cli/diff/align.h"

#include <algorithm>
#include <unordered_map>

namespace cli {
namespace {

struct Stretch {
    int firstA, endA, firstB, endB;
};

class Aligner {
public:
    Aligner(std::span<const std::uint64_t> a, std::span<const std::uint64_t> b)
        : _a(a), _b(b), _partners(a.size(), -1) {}

    std::vector<int> run() {
        _left.push_back({0, static_cast<int>(_a.size()), 0, static_cast<int>(_b.size())});
        while (!_left.empty()) {
            Stretch part = _left.back();
            _left.pop_back();
            trim(part);
            if (part.firstA < part.endA && part.firstB < part.endB) split(part);
        }
        return std::move(_partners);
    }

private:
    std::uint64_t a(int i) const { return _a[static_cast<std::size_t>(i)]; }
    std::uint64_t b(int i) const { return _b[static_cast<std::size_t>(i)]; }
    void pair(int i, int j) { _partners[static_cast<std::size_t>(i)] = j; }

    void trim(Stretch& part) {
        while (part.firstA < part.endA && part.firstB < part.endB && a(part.firstA) == b(part.firstB)) {
            pair(part.firstA++, part.firstB++);
        }
        while (part.firstA < part.endA && part.firstB < part.endB && a(part.endA - 1) == b(part.endB - 1)) {
            pair(--part.endA, --part.endB);
        }
    }

    /// Divides a stretch at elements that are unique on both sides, in their longest common order.
    void split(const Stretch& part) {
        struct Seen {
            int countA = 0, countB = 0, at = 0;
        };
        std::unordered_map<std::uint64_t, Seen> seen;
        for (int j = part.firstB; j < part.endB; ++j) {
            Seen& each = seen[b(j)];
            ++each.countB;
            each.at = j;
        }
        for (int i = part.firstA; i < part.endA; ++i) {
            if (const auto found = seen.find(a(i)); found != seen.end()) ++found->second.countA;
        }
        std::vector<std::pair<int, int>> unique;
        for (int i = part.firstA; i < part.endA; ++i) {
            const auto found = seen.find(a(i));
            if (found != seen.end() && found->second.countA == 1 && found->second.countB == 1)
                unique.emplace_back(i, found->second.at);
        }
        if (unique.empty()) return repeated(part);
        int firstA = part.firstA, firstB = part.firstB;
        for (const auto& [i, j] : ascending(unique)) {
            _left.push_back({firstA, i, firstB, j});
            pair(i, j);
            firstA = i + 1;
            firstB = j + 1;
        }
        _left.push_back({firstA, part.endA, firstB, part.endB});
    }

    /// Nothing is unique: equal elements are paired as they come, the nearest first.
    void repeated(const Stretch& part) {
        std::unordered_map<std::uint64_t, std::vector<int>> places;
        for (int j = part.endB; j-- > part.firstB;) places[b(j)].push_back(j);
        int next = part.firstB;
        for (int i = part.firstA; i < part.endA; ++i) {
            const auto found = places.find(a(i));
            if (found == places.end()) continue;
            std::vector<int>& rest = found->second;
            while (!rest.empty() && rest.back() < next) rest.pop_back();
            if (rest.empty()) continue;
            pair(i, rest.back());
            next = rest.back() + 1;
        }
    }

    /// The longest subsequence whose second members ascend.
    static std::vector<std::pair<int, int>> ascending(const std::vector<std::pair<int, int>>& pairs) {
        std::vector<std::size_t> tails, before(pairs.size());
        constexpr auto none = static_cast<std::size_t>(-1);
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const auto at = std::lower_bound(tails.begin(), tails.end(), pairs[i].second,
                                             [&](std::size_t tail, int value) { return pairs[tail].second < value; });
            before[i] = at == tails.begin() ? none : *(at - 1);
            if (at == tails.end()) {
                tails.push_back(i);
            } else {
                *at = i;
            }
        }
        std::vector<std::pair<int, int>> found;
        for (std::size_t i = tails.empty() ? none : tails.back(); i != none; i = before[i]) found.push_back(pairs[i]);
        std::reverse(found.begin(), found.end());
        return found;
    }

    std::span<const std::uint64_t> _a, _b;
    std::vector<int> _partners;
    std::vector<Stretch> _left;
};

}  // namespace

std::vector<int> alignEqual(std::span<const std::uint64_t> a, std::span<const std::uint64_t> b) {
    return Aligner(a, b).run();
}

}  // namespace cli
