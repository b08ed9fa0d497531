// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/event_bus.hpp"
#include "nuv/export.hpp"

namespace nuv {

/// A module of the event bus, which creates and owns it.
class NUV_EXPORT IEventModule {
public:
    explicit IEventModule(const EventBus::CreateToken& /*token*/) noexcept {}
    IEventModule(const IEventModule&) = delete;
    IEventModule& operator=(const IEventModule&) = delete;
    virtual ~IEventModule();
};

}  // namespace nuv
