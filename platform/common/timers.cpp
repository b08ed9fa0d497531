// SPDX-License-Identifier: Apache-2.0
#include "platform/common/timers.hpp"

#include <algorithm>
#include <cstddef>
#include <new>

// A handle's private words: its slot and the number of its arming. They stay when the timer ends, so
// that a handle which was overwritten with zeros is known by having none.
namespace nuv::platform {

namespace {

constexpr std::size_t BRANCHES = 4;

constexpr int NOT_ARMED = -1;
constexpr int NO_MEMORY = -2;
constexpr int ZEROED_HANDLE = -2;
constexpr int INVALID_HANDLE = -3;
constexpr int COPIED_HANDLE = -4;

std::uint32_t& slot_of(ctimerhandle& handle) { return handle.priv[0]; }
std::uint32_t slot_of(const ctimerhandle& handle) { return handle.priv[0]; }
std::uint32_t& order_of(ctimerhandle& handle) { return handle.priv[1]; }
std::uint32_t order_of(const ctimerhandle& handle) { return handle.priv[1]; }

}  // namespace

Timers::Found Timers::find(const ctimerhandle* handle, std::uint32_t& slot) const noexcept {
    if (handle == nullptr) {
        return Found::UNKNOWN;
    }
    if (handle->active != 0) {
        slot = slot_of(*handle);
        if (slot >= slots_.size() || slots_[slot].handle == nullptr ||
            slots_[slot].order != order_of(*handle)) {
            return Found::UNKNOWN;
        }
        return slots_[slot].handle == handle ? Found::ARMED : Found::COPY;
    }
    if (order_of(*handle) != 0) {
        return Found::IDLE;
    }
    const auto found = std::find_if(slots_.begin(), slots_.end(), [handle](const Slot& candidate) {
        return candidate.handle == handle;
    });
    slot = static_cast<std::uint32_t>(found - slots_.begin());
    return found == slots_.end() ? Found::IDLE : Found::ZEROED;
}

int Timers::arm(ctimerhandle* handle, std::int64_t duration_ns, ctimer_callback_fn callback,
                void* cbdata) noexcept {
    if (handle == nullptr) {
        return INVALID_HANDLE;
    }
    if (handle->active != 0) {
        if (const int result = disarm(handle); result != 0) {
            return result;
        }
    }
    if (first_free_ == NONE) {
        // With room for all in both lists nothing can fail later.
        if (slots_.size() == slots_.capacity()) {
            const std::size_t room = 2 * slots_.size() + 16;
            try {
                heap_.reserve(room);
                fresh_.reserve(room);
                slots_.reserve(room);
            } catch (const std::bad_alloc&) {
                return NO_MEMORY;
            }
        }
        slots_.emplace_back().place = NONE;
        first_free_ = static_cast<std::uint32_t>(slots_.size() - 1);
    }
    const std::uint32_t slot = first_free_;
    first_free_ = slots_[slot].place;
    if (++armings_ == 0) {
        ++armings_;
    }
    slots_[slot] = {handle, callback, cbdata, armings_,
                    FRESH | static_cast<std::uint32_t>(fresh_.size())};
    fresh_.push_back({duration_ns, armings_, slot});
    handle->active = 1;
    slot_of(*handle) = slot;
    order_of(*handle) = armings_;
    return 0;
}

int Timers::disarm(ctimerhandle* handle) noexcept {
    std::uint32_t slot = NONE;
    const Found found = find(handle, slot);
    switch (found) {
        case Found::UNKNOWN:
            return INVALID_HANDLE;
        case Found::COPY:
            return COPIED_HANDLE;
        case Found::IDLE:
            return NOT_ARMED;
        default:
            break;
    }
    const std::uint32_t place = slots_[slot].place;
    if ((place & FRESH) == 0) {
        take_from_heap(place);
    } else {
        fresh_[place & ~FRESH] = fresh_.back();
        slots_[fresh_.back().slot].place = place;
        fresh_.pop_back();
    }
    release(slot);
    handle->active = 0;
    return found == Found::ZEROED ? ZEROED_HANDLE : 0;
}

int Timers::end(const ctimerhandle* handle, std::int64_t& end_ns) const noexcept {
    std::uint32_t slot = NONE;
    const Found found = find(handle, slot);
    switch (found) {
        case Found::UNKNOWN:
            return INVALID_HANDLE;
        case Found::IDLE:
            return NOT_ARMED;
        case Found::ZEROED:
            return ZEROED_HANDLE;
        default:
            break;
    }
    end_ns = heap_[slots_[slot].place].end;
    return found == Found::COPY ? COPIED_HANDLE : 0;
}

void Timers::start(std::int64_t now_ns) noexcept {
    for (Entry entry : fresh_) {
        entry.end += now_ns;
        heap_.push_back(entry);
        sift_up(heap_.size() - 1, entry);
    }
    fresh_.clear();
}

bool Timers::take_due(std::int64_t now_ns, Due& due) noexcept {
    while (next_end() <= now_ns) {
        const std::uint32_t index = heap_.front().slot;
        const Slot slot = slots_[index];
        take_from_heap(0);
        release(index);
        // One that was overwritten is not the timer that was armed.
        if (slot.handle->active != 0 && slot_of(*slot.handle) == index &&
            order_of(*slot.handle) == slot.order) {
            slot.handle->active = 0;
            due = {slot.handle, slot.callback, slot.cbdata};
            return true;
        }
    }
    return false;
}

void Timers::put(std::size_t place, const Entry& entry) noexcept {
    heap_[place] = entry;
    slots_[entry.slot].place = static_cast<std::uint32_t>(place);
}

void Timers::sift_up(std::size_t place, Entry entry) noexcept {
    while (place > 0) {
        const std::size_t parent = (place - 1) / BRANCHES;
        if (!(entry < heap_[parent])) {
            break;
        }
        put(place, heap_[parent]);
        place = parent;
    }
    put(place, entry);
}

void Timers::sift_down(std::size_t place, Entry entry) noexcept {
    for (;;) {
        const std::size_t first = BRANCHES * place + 1;
        if (first >= heap_.size()) {
            break;
        }
        std::size_t least = first;
        const std::size_t last = std::min(first + BRANCHES, heap_.size());
        for (std::size_t child = first + 1; child < last; ++child) {
            if (heap_[child] < heap_[least]) {
                least = child;
            }
        }
        if (!(heap_[least] < entry)) {
            break;
        }
        put(place, heap_[least]);
        place = least;
    }
    put(place, entry);
}

void Timers::take_from_heap(std::size_t place) noexcept {
    const Entry last = heap_.back();
    heap_.pop_back();
    if (place == heap_.size()) {
        return;
    }
    if (place > 0 && last < heap_[(place - 1) / BRANCHES]) {
        sift_up(place, last);
    } else {
        sift_down(place, last);
    }
}

void Timers::release(std::uint32_t slot) noexcept {
    slots_[slot].handle = nullptr;
    slots_[slot].place = first_free_;
    first_free_ = slot;
}

}  // namespace nuv::platform
