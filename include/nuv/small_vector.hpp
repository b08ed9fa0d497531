// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "nuv/export.hpp"

namespace nuv {

/// A list that keeps up to `N` elements inside the object and moves to the heap beyond that. What
/// an element on the air may hold fits inside; what a caller sets may be longer, and is refused
/// only when it is written. Contiguous; converts from and to spans. Copyable if `T` is.
template <class T, std::uint32_t N>
class SmallVector {
    static_assert(std::is_nothrow_move_assignable_v<T>);

public:
    using value_type = T;
    using iterator = T*;
    using const_iterator = const T*;

    SmallVector() = default;
    SmallVector(std::initializer_list<T> values) { assign(values.begin(), values.end()); }
    explicit(false) SmallVector(std::span<const T> values) { assign(values.begin(), values.end()); }
    explicit(false) SmallVector(const std::vector<T>& values)
        : SmallVector(std::span<const T>(values)) {}
    ~SmallVector() = default;
    SmallVector(const SmallVector&) = default;
    SmallVector& operator=(const SmallVector&) = default;
    // What was moved from is empty.
    SmallVector(SmallVector&& other) noexcept
        : inline_(std::move(other.inline_)),
          inline_size_(std::exchange(other.inline_size_, 0)),
          heap_(std::move(other.heap_)) {}
    SmallVector& operator=(SmallVector&& other) noexcept {
        inline_ = std::move(other.inline_);
        inline_size_ = std::exchange(other.inline_size_, 0);
        heap_ = std::exchange(other.heap_, {});
        return *this;
    }

    template <std::forward_iterator It>
    void assign(It first, It last) {
        const auto count = static_cast<std::size_t>(std::distance(first, last));
        clear();
        if (count <= N) {
            std::copy(first, last, inline_.begin());
            inline_size_ = static_cast<std::uint32_t>(count);
        } else {
            heap_.assign(first, last);
        }
    }

    void push_back(T value) {
        if (heap_.empty() && inline_size_ < N) {
            inline_[inline_size_++] = std::move(value);
            return;
        }
        spill();
        heap_.push_back(std::move(value));
    }

    template <std::forward_iterator It>
    void append(It first, It last) {
        const auto count = static_cast<std::size_t>(std::distance(first, last));
        if (heap_.empty() && count <= N - inline_size_) {
            std::copy(first, last, inline_.begin() + inline_size_);
            inline_size_ += static_cast<std::uint32_t>(count);
            return;
        }
        spill();
        heap_.insert(heap_.end(), first, last);
    }

    void clear() {
        heap_.clear();
        if constexpr (!std::is_trivially_destructible_v<T>) {
            std::ranges::generate_n(inline_.begin(), inline_size_, [] { return T{}; });
        }
        inline_size_ = 0;
    }

    std::size_t size() const { return heap_.empty() ? inline_size_ : heap_.size(); }
    bool empty() const { return size() == 0; }
    T* data() { return heap_.empty() ? inline_.data() : heap_.data(); }
    const T* data() const { return heap_.empty() ? inline_.data() : heap_.data(); }
    iterator begin() { return data(); }
    iterator end() { return data() + size(); }
    const_iterator begin() const { return data(); }
    const_iterator end() const { return data() + size(); }
    T& operator[](std::size_t index) { return data()[index]; }
    const T& operator[](std::size_t index) const { return data()[index]; }

    friend bool operator==(const SmallVector& a, const SmallVector& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    void spill() {
        if (heap_.empty()) {
            heap_.assign(std::make_move_iterator(inline_.begin()),
                         std::make_move_iterator(inline_.begin() + inline_size_));
            inline_size_ = 0;
        }
    }

    std::array<T, N> inline_{};
    std::uint32_t inline_size_ = 0;
    std::vector<T> heap_;  // all elements, as soon as there are more than N
};

}  // namespace nuv
