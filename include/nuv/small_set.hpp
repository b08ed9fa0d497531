// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>

#include "nuv/export.hpp"

namespace nuv {

namespace impl {

template <class Range, class T>
concept RangeOf =
    std::same_as<std::remove_cvref_t<decltype(*std::begin(std::declval<const Range&>()))>, T>;

}  // namespace impl

/// A set of numbers or enumerators below `N`, one bit each inside the object; iterates in ascending
/// order. Usable in constant expressions.
template <class T, std::size_t N>
class SmallSet {
public:
    using value_type = T;

    class const_iterator {
    public:
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using reference = T;
        using pointer = const T*;
        using iterator_category = std::input_iterator_tag;  // of old: it refers to no element
        using iterator_concept = std::forward_iterator_tag;

        constexpr const_iterator() = default;
        constexpr const_iterator(const SmallSet& set, std::size_t from)
            : set_(&set), position_(set.next(from)) {}

        constexpr T operator*() const { return static_cast<T>(position_); }
        constexpr const_iterator& operator++() {
            position_ = set_->next(position_ + 1);
            return *this;
        }
        constexpr const_iterator operator++(int) {
            const const_iterator before = *this;
            ++*this;
            return before;
        }
        constexpr bool operator==(const const_iterator&) const = default;

    private:
        const SmallSet* set_ = nullptr;
        std::size_t position_ = 0;
    };
    using iterator = const_iterator;

    constexpr SmallSet() = default;
    constexpr SmallSet(std::initializer_list<T> values) {
        for (const T value : values) {
            insert(value);
        }
    }

    /// Of the values of any range of T, in any order, repeated or not. Each must lie below `N`.
    template <impl::RangeOf<T> Range>
    constexpr explicit SmallSet(const Range& values) {
        for (const T value : values) {
            insert(value);
        }
    }

    /// `value` must lie below `N`.
    constexpr void insert(T value) {
        words_[index(value) / WORD_BITS] |= Word{1} << index(value) % WORD_BITS;
    }
    constexpr bool contains(T value) const {
        return index(value) < N &&
               (words_[index(value) / WORD_BITS] >> index(value) % WORD_BITS & 1U) != 0;
    }
    constexpr std::size_t size() const {
        std::size_t count = 0;
        for (const Word word : words_) {
            count += static_cast<std::size_t>(std::popcount(word));
        }
        return count;
    }
    constexpr bool empty() const { return *this == SmallSet(); }
    constexpr const_iterator begin() const { return {*this, 0}; }
    constexpr const_iterator end() const { return {*this, N}; }

    constexpr bool operator==(const SmallSet&) const = default;

private:
    using Word = std::uint32_t;
    static constexpr std::size_t WORD_BITS = 32;

    static constexpr std::size_t index(T value) { return static_cast<std::size_t>(value); }

    /// The first element from `from` on, `N` for none.
    constexpr std::size_t next(std::size_t from) const {
        for (std::size_t word = from / WORD_BITS; word < words_.size(); ++word) {
            const Word rest = words_[word] >> from % WORD_BITS;
            if (rest != 0) {
                return from + static_cast<std::size_t>(std::countr_zero(rest));
            }
            from = (word + 1) * WORD_BITS;
        }
        return N;
    }

    std::array<Word, (N + WORD_BITS - 1) / WORD_BITS> words_{};
};

}  // namespace nuv
