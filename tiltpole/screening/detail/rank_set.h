#pragma once

#include <cstddef>
#include <vector>

namespace tiltpole::detail {

// A set of the numbers 0 ... size - 1 that counts and finds its members by rank, each in
// O(log size): a binary indexed tree (P. M. Fenwick, "A new data structure for cumulative frequency
// tables", 1994).
class RankSet {
 public:
  explicit RankSet(std::size_t size) : m_sums(size + 1, 0) {}

  void Insert(std::size_t number) {
    for (std::size_t i = number + 1; i < m_sums.size(); i += LowestBit(i)) ++m_sums[i];
  }

  void Remove(std::size_t number) {
    for (std::size_t i = number + 1; i < m_sums.size(); i += LowestBit(i)) --m_sums[i];
  }

  std::size_t CountBelow(std::size_t number) const {
    std::size_t count = 0;
    for (std::size_t i = number; i > 0; i -= LowestBit(i)) count += m_sums[i];
    return count;
  }

  // The member that has exactly `rank` members below it; there must be one.
  std::size_t AtRank(std::size_t rank) const {
    std::size_t number = 0;
    for (std::size_t bit = HighestBit(m_sums.size() - 1); bit > 0; bit /= 2) {
      if (number + bit >= m_sums.size() || m_sums[number + bit] > rank) continue;
      number += bit;
      rank -= m_sums[number];
    }
    return number;
  }

 private:
  static std::size_t LowestBit(std::size_t i) { return i & (~i + 1); }

  static std::size_t HighestBit(std::size_t i) {
    std::size_t bit = 1;
    while (bit <= i / 2) bit *= 2;
    return bit;
  }

  // Each entry holds the count of the members in the LowestBit(i) numbers that end at i - 1.
  std::vector<std::size_t> m_sums;
};

}  // namespace tiltpole::detail
