#include <tarvo/core/Ordering.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>

Ordering::Ordering(const std::vector<int>& m) : k_(static_cast<int>(m.size())), m_(m) {
    assert(k_ > 0);
    for (int i = 0; i < k_; ++i) assert(m_[i] > 0);
}

bool Ordering::finished() const { return round_ >= maxRound(); }

int Ordering::maxRound() const {
    if (k_ < 1) return 0;
    int product = 1;
    for (int n : m_) product *= n;
    return product;
}

std::vector<int> Ordering::digits(int id) const {
    std::vector<int> d(k_);
    for (int i = 0; i < k_; ++i) {
        d[i] = id % m_[i];
        id /= m_[i];
    }
    return d;
}

int Ordering::id(const std::vector<int>& d) const {
    int v = d[k_ - 1];
    for (int i = k_ - 2; i >= 0; --i) v = v * m_[i] + d[i];
    return v;
}

int Ordering::distance(int a, int b) const {
    const std::vector<int> da = digits(a), db = digits(b);
    int largest = 0;
    for (int i = 0; i < k_; ++i) largest = std::max(largest, std::abs(da[i] - db[i]));
    return largest;
}

int Ordering::index(int variable, int round) const { return digits(idFromRound(round))[k_ - 1 - variable]; }

void Ordering::print() const {
    int round = 0;
    for (; round < maxRound(); ++round) {
        const int point = idFromRound(round);
        const std::vector<int> d = digits(point);
        std::printf("round %d id %d (%d", round, point, d[k_ - 1]);
        for (int i = k_ - 2; i >= 0; --i) std::printf(" %d", d[i]);
        std::printf(")\n");
    }
    assert(round == maxRound());
}

OrderingReflectedGray::OrderingReflectedGray(const std::vector<int>& m)
    : Ordering(m), digits_(k_ + 1, 0), directions_(k_ + 1, 1) {}

int OrderingReflectedGray::next() {
    for (int i = 0; i <= k_; ++i) {
        const int radix = i < k_ ? m_[i] : m_[k_ - 1]; // the guard has the radix of the last digit
        const int moved = digits_[i] + directions_[i];
        if (moved >= 0 && moved < radix) {
            digits_[i] = moved;
            break;
        }
        directions_[i] = -directions_[i];
    }
    ++round_;
    return id(std::vector<int>(digits_.begin(), digits_.begin() + k_));
}

int OrderingReflectedGray::idFromRound(int round) const {
    const std::vector<int> n = digits(round);
    std::vector<int> g(k_);
    int p = 0;
    for (int i = k_ - 1; i >= 0; --i) {
        g[i] = p % 2 == 0 ? n[i] : m_[i] - 1 - n[i];
        p = p * m_[i] + n[i];
    }
    return id(g);
}

int OrderingReflectedGray::roundFromId(int point) const {
    const std::vector<int> n = digits(point);
    std::vector<int> g(k_);
    int p = 0;
    for (int i = k_ - 1; i >= 0; --i) {
        g[i] = p % 2 == 0 ? n[i] : m_[i] - 1 - n[i];
        p = p + n[i];
    }
    return id(g);
}

int OrderingSpiral::centre(const std::vector<int>& m) {
    int v = 0;
    for (auto it = m.rbegin(); it != m.rend(); ++it) v = v * *it + *it / 2;
    return v;
}

OrderingSpiral::OrderingSpiral(const std::vector<int>& m, int start) : Ordering(m), start_(start) {
    int current = start;
    int radius = 1;
    direct_[0] = current;
    inverse_[current] = 0;
    visited_.insert(current);
    for (int round = 1; round < maxRound();) {
        // The box of points within `radius` of the current one, cut at the grid's edge, in mixed-radix order.
        const std::vector<int> centre = digits(current);
        std::vector<int> low(k_), high(k_);
        for (int i = 0; i < k_; ++i) {
            low[i] = std::max(0, centre[i] - radius);
            high[i] = std::min(m_[i] - 1, centre[i] + radius);
        }
        std::vector<std::pair<int, int>> candidates; // distance from the start, id
        std::vector<int> d = low;
        while (true) {
            const int point = id(d);
            if (!visited_.count(point)) candidates.emplace_back(distance(point, start_), point);
            int i = 0;
            while (i < k_ && ++d[i] > high[i]) {
                d[i] = low[i];
                ++i;
            }
            if (i == k_) break;
        }
        if (candidates.empty()) {
            ++radius;
            continue;
        }
        // Nearest to the start first; among equals the first found in the box.
        std::stable_sort(candidates.begin(), candidates.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        current = candidates.front().second;
        visited_.insert(current);
        direct_[round] = current;
        inverse_[current] = round;
        ++round;
        radius = 1;
    }
    assert(visited_.size() == (unsigned int)maxRound());
    round_ = 0;
}

int OrderingSpiral::idFromRound(int round) const {
    const auto id = direct_.find(round);
    assert(id != direct_.end());
    return id->second;
}

int OrderingSpiral::roundFromId(int point) const { return inverse_.at(point); }

std::unique_ptr<Ordering> makeOrdering(const std::string& order, const std::vector<int>& m) {
    if (order == "boustrophedon") return std::make_unique<OrderingReflectedGray>(m);
    if (order == "quasi-spiral") return std::make_unique<OrderingSpiral>(m, OrderingSpiral::centre(m));
    return std::make_unique<OrderingLexicographical>(m);
}
