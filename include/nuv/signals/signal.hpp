// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "nuv/signals/connection.hpp"

namespace nuv::signals {

/// Functions that are called together, in the order in which they were connected.
///
/// An emission may be interfered with by what it calls: a slot that is connected during it is not
/// called in it, one that is disconnected or blocked before its turn is passed over, and when the
/// signal is destroyed the rest is not called. An exception of a slot leaves emit(); the rest is not
/// called. For one thread.
template <typename... Args>
class Signal {
public:
    using Function = std::function<void(Args...)>;

    Signal() : state_(std::make_shared<State>()) {}
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal() { state_->abandon(); }

    /// The function stays connected until it is disconnected or the signal dies, also without the
    /// connection.
    template <typename F>
    requires std::invocable<F&, Args...> Connection connect(F&& function) {
        auto slot = std::make_shared<Slot>(*state_, std::forward<F>(function));
        state_->slots.push_back(slot);
        return Connection(std::weak_ptr<SlotBase>(slot));
    }

    void emit(Args... args) {
        if (state_->blocked) {
            return;
        }
        const Emission emission(state_);
        for (std::size_t i = 0; i < emission.count && !emission.state->abandoned; ++i) {
            const std::shared_ptr<Slot> slot = emission.state->slots[i];
            if (slot->is_connected() && !slot->is_blocked()) {
                slot->function(args...);
            }
        }
    }

    bool is_blocked() const noexcept { return state_->blocked; }
    /// Emissions of a blocked signal do nothing.
    void block(bool blocked) noexcept { state_->blocked = blocked; }

private:
    class Slot;

    struct State {
        std::vector<std::shared_ptr<Slot>> slots;
        unsigned emissions = 0;  // under way
        bool blocked = false;
        bool abandoned = false;

        // Slots that are gone leave the list between emissions only, so that places stay. One by
        // one: what a slot owns may disconnect others as it dies.
        void sweep() noexcept {
            for (std::size_t i = 0; emissions == 0 && i < slots.size();) {
                if (slots[i]->is_connected()) {
                    ++i;
                    continue;
                }
                const auto gone = std::move(slots[i]);
                slots.erase(slots.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }

        void abandon() noexcept {
            abandoned = true;
            for (const auto& slot : slots) {
                slot->state_ = nullptr;
            }
            sweep();
        }
    };

    class Slot final : public SlotBase {
    public:
        template <typename F>
        Slot(State& state, F&& wanted) : function(std::forward<F>(wanted)), state_(&state) {}

        bool is_expired() const noexcept override { return state_ == nullptr; }
        const void* signal_id() const noexcept override { return state_; }
        bool is_connected() const noexcept override { return connected_ && state_ != nullptr; }
        void disconnect() noexcept override {
            if (std::exchange(connected_, false) && state_ != nullptr) {
                state_->sweep();
            }
        }
        bool is_blocked() const noexcept override { return blocked_; }
        void block(bool blocked) noexcept override { blocked_ = blocked; }

        Function function;

    private:
        friend State;
        State* state_;  // null: the signal is gone
        bool connected_ = true;
        bool blocked_ = false;
    };

    struct Emission {
        explicit Emission(std::shared_ptr<State> emitting)
            : state(std::move(emitting)), count(state->slots.size()) {
            ++state->emissions;
        }
        ~Emission() {
            --state->emissions;
            state->sweep();
        }
        Emission(const Emission&) = delete;
        Emission& operator=(const Emission&) = delete;

        std::shared_ptr<State> state;  // outlives a signal that dies meanwhile
        std::size_t count;
    };

    std::shared_ptr<State> state_;
};

}  // namespace nuv::signals
