#pragma once

#include <array>
#include <cstddef>
#include <utility>
#include <vector>
#include <vela/Range.hpp>
#include <vela/numeric/truncate.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::gvm::fast::plain {

/// The fast learner with nothing done for speed: an array of clusters that point at each other,
/// every formula written out where it is used, members found by looking at every delta.
///
/// What `fast::Learner` computes must equal this to the last bit.
template <std::size_t N>
class Learner {
public:
    bool update_all_after_insert = true;

    bool learn(unsigned k, const Range<segment::Iterator<N, int>>& range) {
        capacity = k;
        nr_clusters = 0;
        storage.assign(k, {});
        order.clear();
        for (std::size_t i = 0; i < k; ++i) {
            storage[i].ix = static_cast<int>(i);
            order.push_back(&storage[i]);
        }
        member.clear();
        for (std::size_t i = 0; i < range.size(); ++i)
            if (!process(*(range.begin() + static_cast<std::ptrdiff_t>(i)))) return false;
        return true;
    }

    bool merge_two_clusters() {
        if (nr_clusters < 2) return false;
        Cluster* x = &storage[1];
        double lowest = best_merge(x).second;
        for (std::size_t i = 0; i < nr_clusters; ++i) {
            const auto [partner, delta] = best_merge(order[i]);
            if (partner && delta < lowest) {
                x = order[i];
                lowest = delta;
            }
        }
        Cluster* p = x->best_merge;
        unite(p, x);
        p->dirty = true;
        bubble_up(p);
        x->count = 0;
        x->sum = {};
        x->sum_sq = x->cost = 0;
        bubble_down(x);
        move_members(x, p);
        if (x->ix != static_cast<int>(nr_clusters) - 1) {
            Cluster* last = &storage[nr_clusters - 1];
            const int ix = x->ix;
            *x = *last;
            x->ix = ix;
            bubble_up(x);
            last->count = 0;
            last->sum = {};
            last->sum_sq = last->cost = 0;
            bubble_down(last);
            find_best_merge(x);
            --nr_clusters;
            update_after_merge(p, x);
            move_members(last, x);
        } else {
            --nr_clusters;
            update_after_insert(p);
        }
        return true;
    }

    std::size_t nr_live() const { return nr_clusters; }

    double cost() const {
        double total = 0;
        for (std::size_t i = 0; i < nr_clusters; ++i)
            total += storage[i].cost;
        return total;
    }

    std::vector<unsigned> sizes() const {
        std::vector<unsigned> result;
        for (std::size_t i = 0; i < nr_clusters; ++i)
            result.push_back(static_cast<unsigned>(order[i]->count));
        return result;
    }

    std::vector<std::array<int, N>> centers() const {
        std::vector<std::array<int, N>> result(nr_clusters);
        for (std::size_t i = 0; i < nr_clusters; ++i)
            for (std::size_t n = 0; n < N; ++n)
                result[i][n] = numeric::truncate_to_int32(order[i]->sum[n]) / order[i]->count;
        return result;
    }

    std::vector<unsigned long> ixs() const {
        std::vector<unsigned long> result;
        for (const Cluster* c : member)
            for (std::size_t i = 0; i < nr_clusters; ++i)
                if (order[i] == c) result.push_back(i);
        return result;
    }

private:
    using Delta = std::array<int, N>;

    struct Cluster {
        std::array<double, N> sum{};
        double sum_sq = 0;
        int count = 0;
        double cost = 0;
        Cluster* best_merge = nullptr;
        double best_delta = 0;
        bool dirty = false;
        int ix = 0;
    };

    static double square(const Delta& d) {
        double result = 0;
        for (std::size_t n = 0; n < N; ++n)
            result += static_cast<double>(d[n]) * static_cast<double>(d[n]);
        return result;
    }

    static double square(const std::array<double, N>& s) {
        double result = 0;
        for (std::size_t n = 0; n < N; ++n)
            result += s[n] * s[n];
        return result;
    }

    static double merge_cost(const Cluster* a, const Cluster* b) {
        std::array<double, N> s;
        for (std::size_t n = 0; n < N; ++n)
            s[n] = a->sum[n] + b->sum[n];
        double result = square(s) / -static_cast<double>(a->count + b->count);
        result += a->sum_sq;
        result += b->sum_sq;
        result -= a->cost;
        result -= b->cost;
        return result;
    }

    static double add_cost(const Cluster* c, const Delta& d) {
        std::array<double, N> s;
        for (std::size_t n = 0; n < N; ++n)
            s[n] = c->sum[n] + d[n];
        double result = square(s) / -static_cast<double>(c->count + 1);
        result += c->sum_sq;
        result += square(d);
        result -= c->cost;
        return result;
    }

    static void become(Cluster* c, const Delta& d) {
        for (std::size_t n = 0; n < N; ++n)
            c->sum[n] = d[n];
        c->sum_sq = square(d);
        c->count = 1;
        c->cost = 0;
    }

    static void insert(Cluster* c, const Delta& d) {
        for (std::size_t n = 0; n < N; ++n)
            c->sum[n] += d[n];
        c->sum_sq += square(d);
        c->count += 1;
        c->cost = -(square(c->sum) / c->count - c->sum_sq);
    }

    static void unite(Cluster* p, const Cluster* x) {
        for (std::size_t n = 0; n < N; ++n)
            p->sum[n] += x->sum[n];
        p->sum_sq += x->sum_sq;
        p->count += x->count;
        p->cost = -(square(p->sum) / p->count - p->sum_sq);
    }

    bool process(const Delta& d) {
        if (nr_clusters == 0) {
            if (capacity == 0) return false;
            become(&storage[0], d);
            nr_clusters = 1;
            member.push_back(&storage[0]);
            return true;
        }
        if (nr_clusters == 1) {
            Cluster* c = order[0];
            if (add_cost(c, d) != 0 && capacity != 1) {
                Cluster* fresh = order[1];
                become(fresh, d);
                fresh->best_merge = c;
                fresh->best_delta = merge_cost(fresh, c);
                fresh->dirty = c->dirty = false;
                nr_clusters = 2;
                member.push_back(fresh);
                return true;
            }
            insert(c, d);
            c->dirty = true;
            member.push_back(c);
            return true;
        }
        double best = add_cost(&storage[0], d);
        if (best == 0) return insert_and_finish(&storage[0], d);
        Cluster* nearest = &storage[0];
        Cluster* merge_from = &storage[1];
        double m = best_merge(merge_from).second;
        for (std::size_t i = 0; i < nr_clusters; ++i) {
            Cluster* c = order[i];
            const double a = add_cost(c, d);
            if (a == 0) return insert_and_finish(c, d);
            if (a < best) nearest = c;
            const auto [partner, delta] = best_merge(c);
            if (partner && delta < m) {
                merge_from = c;
                m = delta;
            }
            if (a < best) best = a;
        }
        if (nr_clusters < capacity) {
            Cluster* fresh = &storage[nr_clusters];
            become(fresh, d);
            fresh->best_merge = nearest;
            fresh->best_delta = best;
            fresh->dirty = false;
            ++nr_clusters;
            member.push_back(fresh);
            return true;
        }
        if (m >= best) return insert_and_finish(nearest, d);
        Cluster* x = merge_from;
        Cluster* p = x->best_merge;
        unite(p, x);
        p->dirty = true;
        bubble_up(p);
        become(x, d);
        x->dirty = true;
        bubble_down(x);
        update_after_merge(p, x);
        move_members(x, p);
        member.push_back(x);
        return true;
    }

    bool insert_and_finish(Cluster* c, const Delta& d) {
        insert(c, d);
        c->dirty = true;
        bubble_up(c);
        update_after_insert(c);
        member.push_back(c);
        return true;
    }

    void bubble_up(Cluster* c) {
        std::size_t i = nr_clusters - 1;
        while (i >= 1 && order[i] != c)
            --i;
        while (i > 0 && c->count > order[i - 1]->count) {
            std::swap(order[i], order[i - 1]);
            --i;
        }
    }

    void bubble_down(Cluster* c) {
        std::size_t i = 0;
        while (i + 1 < nr_clusters && order[i] != c)
            ++i;
        while (i + 1 < nr_clusters && c->count < order[i + 1]->count) {
            std::swap(order[i], order[i + 1]);
            ++i;
        }
    }

    std::pair<Cluster*, double> best_merge(Cluster* c) {
        if (c->ix == 0) return {nullptr, 0};
        if (c->dirty || c->best_merge->dirty) find_best_merge(c);
        return {c->best_merge, c->best_delta};
    }

    void find_best_merge(Cluster* c) {
        c->best_merge = &storage[0];
        c->best_delta = merge_cost(c, &storage[0]);
        for (int i = 1; i < c->ix; ++i) {
            const double delta = merge_cost(c, &storage[static_cast<std::size_t>(i)]);
            if (delta < c->best_delta) {
                c->best_merge = &storage[static_cast<std::size_t>(i)];
                c->best_delta = delta;
            }
        }
    }

    void update_after_insert(Cluster* c) {
        const auto above = static_cast<std::size_t>(c->ix) + 1;
        if (update_all_after_insert) {
            for (std::size_t i = above; i < nr_clusters; ++i) {
                Cluster* x = &storage[i];
                const double delta = merge_cost(x, c);
                if (x->best_merge == c) {
                    x->best_delta = delta;
                } else if (x->best_delta > delta) {
                    x->best_merge = c;
                    x->best_delta = delta;
                }
            }
            for (Cluster& any : storage)
                any.dirty = false;
            c->dirty = true;
        } else {
            if (c->best_merge) c->best_delta = merge_cost(c, c->best_merge);
            for (std::size_t i = above; i < nr_clusters; ++i)
                if (storage[i].best_merge == c) storage[i].best_delta = merge_cost(&storage[i], c);
            for (Cluster& any : storage)
                any.dirty = false;
        }
    }

    void update_after_merge(Cluster* a, Cluster* b) {
        for (std::size_t i = static_cast<std::size_t>(a->ix) + 1; i < nr_clusters; ++i) {
            Cluster* x = &storage[i];
            const double with_a = merge_cost(x, a);
            if (x->best_merge == a) {
                x->best_delta = with_a;
            } else if (x->best_delta > with_a) {
                x->best_merge = a;
                x->best_delta = with_a;
            }
            if (static_cast<int>(i) <= b->ix) continue;
            const double with_b = merge_cost(x, b);
            if (x->best_merge == b) {
                x->best_delta = with_b;
            } else if (x->best_delta > with_b) {
                x->best_merge = b;
                x->best_delta = with_b;
            }
        }
        for (Cluster& any : storage)
            any.dirty = false;
        a->dirty = b->dirty = true;
    }

    void move_members(const Cluster* from, Cluster* to) {
        for (Cluster*& c : member)
            if (c == from) c = to;
    }

    std::vector<Cluster*> order;
    std::size_t nr_clusters = 0;
    std::vector<Cluster> storage;
    std::size_t capacity = 0;
    std::vector<Cluster*> member;  // per delta
};

}  // namespace vela::gvm::fast::plain
