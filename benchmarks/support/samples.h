// What one side of a comparison measured, round after round.
#pragma once

#include <algorithm>
#include <stdexcept>
#include <vector>

class Samples {
public:
    void Add(double value) { m_values.push_back(value); }
    [[nodiscard]] const std::vector<double>& Values() const noexcept { return m_values; }
    [[nodiscard]] std::size_t Count() const noexcept { return m_values.size(); }

    // The value in the middle: a round that another process of the machine disturbed does not move it.
    [[nodiscard]] double Median() const {
        std::vector<double> sorted = Sorted();
        const std::size_t middle = sorted.size() / 2;
        return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
    }
    [[nodiscard]] double Worst() const { return Sorted().back(); }

private:
    [[nodiscard]] std::vector<double> Sorted() const {
        if (m_values.empty()) throw std::logic_error("nothing was measured");
        std::vector<double> sorted = m_values;
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }

    std::vector<double> m_values;
};
