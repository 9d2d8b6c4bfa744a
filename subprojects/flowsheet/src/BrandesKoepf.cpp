#include "BrandesKoepf.h"

#include <tarvo/flowsheet/LayoutDummyVertex.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using Vertex = Layout::Vertex;

namespace {

bool isDummy(const Vertex* v) { return dynamic_cast<const Layout::DummyVertex*>(v) != nullptr; }

// A segment between two dummies: a part of a long edge, which should run straight.
bool isInner(const Layout::Piece& piece) { return isDummy(piece.from.vertex) && isDummy(piece.to.vertex); }

// A class that no other class pushed away stays where its blocks were placed.
double shiftOf(const Vertex* sink) { return std::isfinite(sink->shift) ? sink->shift : 0.0; }

} // namespace

BrandesKoepf::BrandesKoepf(const std::vector<std::vector<Vertex*>>& layers, const std::vector<Layout::Piece*>& pieces,
                           const Layout::Settings& settings, LineOffset lineOffset)
    : layers_(layers), settings_(settings), lineOffset_(std::move(lineOffset)) {
    for (const auto& layer : layers_)
        for (std::size_t i = 0; i < layer.size(); ++i) layer[i]->position = i;
    for (Layout::Piece* piece : pieces) {
        Vertex* from = piece->from.vertex;
        Vertex* to = piece->to.vertex;
        if (from->layer + 1 != to->layer) continue;
        right_[from].push_back({to, piece});
        left_[to].push_back({from, piece});
    }
    auto byPosition = [](const Link& a, const Link& b) { return a.other->position < b.other->position; };
    for (auto* side : {&left_, &right_})
        for (auto& [vertex, links] : *side) std::stable_sort(links.begin(), links.end(), byPosition);
}

void BrandesKoepf::run() {
    // (0, 0) walks the columns from the left and each column from the top; (1, 1) from the right and the
    // bottom.
    for (std::size_t pass = 0; pass < 4; ++pass) {
        const bool rightToLeft = pass / 2 == 1, bottomUp = pass % 2 == 1;
        markConflicts_();
        alignBlocks_(rightToLeft, bottomUp);
        offsetWithinBlocks_();
        compact_(bottomUp, pass);
    }
    combine_();
}

// A segment that crosses an inner segment is marked, so that long edges keep straight rather than the
// segment that crosses them.
void BrandesKoepf::markConflicts_() {
    for (auto& [vertex, links] : left_)
        for (Link& link : links) link.piece->marked = false;
    for (std::size_t i = 0; i + 1 < layers_.size(); ++i) {
        const auto& upper = layers_[i];
        const auto& lower = layers_[i + 1];
        std::size_t k0 = 0, l = 0;
        for (std::size_t l1 = 0; l1 < lower.size(); ++l1) {
            const Vertex* inner = nullptr;
            const auto links = left_.find(lower[l1]);
            if (links != left_.end())
                for (const Link& link : links->second)
                    if (isInner(*link.piece)) inner = link.other;
            if (!inner && l1 + 1 != lower.size()) continue;
            const std::size_t k1 = inner ? inner->position : (upper.empty() ? 0 : upper.size() - 1);
            for (; l <= l1; ++l) {
                const auto those = left_.find(lower[l]);
                if (those == left_.end()) continue;
                for (const Link& link : those->second) {
                    const std::size_t k = link.other->position;
                    if ((k < k0 || k > k1) && !isInner(*link.piece)) link.piece->marked = true;
                }
            }
            k0 = k1;
        }
    }
}

// Each vertex joins the block of a median neighbour in the column walked before, unless the segment is
// marked or would cross an alignment made before in this column.
void BrandesKoepf::alignBlocks_(bool rightToLeft, bool bottomUp) {
    for (const auto& layer : layers_)
        for (Vertex* v : layer) {
            v->root = v->align = v;
            v->joint = nullptr;
        }
    const std::size_t n = layers_.size();
    for (std::size_t step = 0; step < n; ++step) {
        const auto& layer = layers_[rightToLeft ? n - 1 - step : step];
        std::ptrdiff_t last = bottomUp ? std::numeric_limits<std::ptrdiff_t>::max() : -1;
        for (std::size_t k = 0; k < layer.size(); ++k) {
            Vertex* v = layer[bottomUp ? layer.size() - 1 - k : k];
            const auto& side = rightToLeft ? right_ : left_;
            const auto found = side.find(v);
            if (found == side.end() || found->second.empty()) continue;
            const std::vector<Link>& links = found->second;
            const std::size_t d = links.size();
            const std::array<std::size_t, 2> medians =
                bottomUp ? std::array<std::size_t, 2>{d / 2, (d - 1) / 2} : std::array<std::size_t, 2>{(d - 1) / 2, d / 2};
            for (std::size_t m : medians) {
                if (v->align != v) break;
                const Link& link = links[m];
                const auto position = static_cast<std::ptrdiff_t>(link.other->position);
                if (link.piece->marked || (bottomUp ? last <= position : last >= position)) continue;
                link.other->align = v;
                v->root = link.other->root;
                v->align = v->root;
                v->joint = link.piece;
                last = position;
            }
        }
    }
}

void BrandesKoepf::offsetWithinBlocks_() {
    for (const auto& layer : layers_)
        for (Vertex* root : layer) {
            if (root->root != root) continue;
            root->innerShift = 0.0;
            double least = 0.0;
            for (Vertex *previous = root, *w = root->align; w != root; previous = w, w = w->align) {
                const Layout::Piece& joint = *w->joint;
                const Layout::Stop& atPrevious = joint.from.vertex == previous ? joint.from : joint.to;
                const Layout::Stop& atW = joint.from.vertex == w ? joint.from : joint.to;
                w->innerShift = previous->innerShift + lineOffset_(atPrevious) - lineOffset_(atW);
                least = std::min(least, w->innerShift);
            }
            Vertex* w = root;
            do {
                w->innerShift -= least;
                w = w->align;
            } while (w != root);
        }
}

Vertex* BrandesKoepf::before_(const Vertex* v, bool bottomUp) const {
    const auto& layer = layers_[v->layer];
    if (bottomUp) return v->position + 1 < layer.size() ? layer[v->position + 1] : nullptr;
    return v->position > 0 ? layer[v->position - 1] : nullptr;
}

// Coordinates grow in the direction of the walk: downwards, or upwards for a walk from the bottom. The
// coordinate of a block is the top of its member with no inner shift.
double BrandesKoepf::separation_(const Vertex* before, const Vertex* after, bool bottomUp) const {
    const double gap = settings_.verticalMinimumVertexSeparation;
    if (bottomUp) return after->innerShift + after->height() + gap - before->innerShift;
    return before->innerShift + before->height() + gap - after->innerShift;
}

void BrandesKoepf::placeBlock_(Vertex* v, bool bottomUp) {
    if (!std::isnan(v->y)) return;
    v->y = 0.0;
    Vertex* w = v;
    do {
        if (Vertex* before = before_(w, bottomUp)) {
            Vertex* u = before->root;
            placeBlock_(u, bottomUp);
            if (v->sink == v) v->sink = u->sink;
            if (v->sink != u->sink)
                classBorders_.emplace_back(before, w);
            else
                v->y = std::max(v->y, u->y + separation_(before, w, bottomUp));
        }
        w = w->align;
    } while (w != v);
}

void BrandesKoepf::compact_(bool bottomUp, std::size_t pass) {
    for (const auto& layer : layers_)
        for (Vertex* v : layer) {
            v->sink = v;
            v->shift = std::numeric_limits<double>::infinity();
            v->y = std::numeric_limits<double>::quiet_NaN();
        }
    classBorders_.clear();
    for (const auto& layer : layers_)
        for (Vertex* v : layer)
            if (v->root == v) placeBlock_(v, bottomUp);
    // A class that stands before another in some column moves back until the two keep apart; the
    // constraints run one way between classes, so that the rounds end.
    bool moved = true;
    for (std::size_t round = 0; moved && round <= classBorders_.size(); ++round) {
        moved = false;
        for (const auto& [before, after] : classBorders_) {
            Vertex* moving = before->root->sink;
            const double limit = shiftOf(after->root->sink) + after->root->y - before->root->y -
                                 separation_(before, after, bottomUp);
            if (limit < shiftOf(moving)) {
                moving->shift = limit;
                moved = true;
            }
        }
    }
    // Roots first, since members read the coordinates of their roots; then every vertex stands where this
    // pass put it, so that the next pass measures its lines on finite coordinates.
    for (const auto& layer : layers_)
        for (Vertex* v : layer) {
            const double block = v->root->y + shiftOf(v->root->sink);
            v->trial[pass] = (bottomUp ? -block : block) + v->innerShift;
        }
    for (const auto& layer : layers_)
        for (Vertex* v : layer) v->y = v->trial[pass];
}

// The narrowest of the four, or with `balanced` the mean of the two middle coordinates of each vertex once
// all four are moved onto the narrowest.
void BrandesKoepf::combine_() {
    std::vector<Vertex*> all;
    for (const auto& layer : layers_) all.insert(all.end(), layer.begin(), layer.end());
    if (all.empty()) return;
    std::array<double, 4> low, high;
    low.fill(std::numeric_limits<double>::infinity());
    high.fill(-std::numeric_limits<double>::infinity());
    for (const Vertex* v : all)
        for (std::size_t i = 0; i < 4; ++i) {
            low[i] = std::min(low[i], v->trial[i]);
            high[i] = std::max(high[i], v->trial[i] + v->height());
        }
    std::size_t narrowest = 0;
    for (std::size_t i = 1; i < 4; ++i)
        if (high[i] - low[i] < high[narrowest] - low[narrowest]) narrowest = i;
    for (Vertex* v : all) {
        if (!settings_.balanced) {
            v->y = v->trial[narrowest];
            continue;
        }
        std::array<double, 4> c;
        for (std::size_t i = 0; i < 4; ++i)
            c[i] = v->trial[i] + (i % 2 == 1 ? high[narrowest] - high[i] : low[narrowest] - low[i]);
        std::sort(c.begin(), c.end());
        v->y = 0.5 * (c[1] + c[2]);
    }
    double top = std::numeric_limits<double>::infinity();
    for (const Vertex* v : all) top = std::min(top, v->y);
    for (Vertex* v : all) v->y -= top;
}
