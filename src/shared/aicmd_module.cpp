// SPDX-License-Identifier: Apache-2.0
#include "nuv/aicmd_module.hpp"

#include <utility>

#include "internal/log_module.hpp"
#include "internal/quote.hpp"

namespace nuv {

namespace {
constinit impl::LogModule log_module{"aicmd"};
}

AicmdModule::AicmdModule(std::string name, void* ctx) : name_(std::move(name)), ctx_(ctx) {}

AicmdModule::~AicmdModule() {
    if (started_ && !stop()) {
        NUV_LOG(log_module, error) << "failed to stop debug command module " << impl::quote(name_);
    }
}

bool AicmdModule::add_command(const std::string& command, const std::string& help,
                              aicmd_handler handler) {
    if (started_) {
        return false;
    }
    commands_.push_back({command, help, handler});
    return true;
}

bool AicmdModule::start() {
    if (started_) {
        return false;
    }
    table_.clear();
    for (const Command& command : commands_) {
        table_.push_back({command.command.c_str(), command.handler, command.help.c_str()});
    }
    library_ = {name_.c_str(), table_.data(), static_cast<std::uint32_t>(table_.size()), {}};
    if (aicmd_register_library(&library_) != 0) {
        return false;
    }
    if (ctx_ != nullptr && aicmd_module_set_ctx(&library_, name_.c_str(), ctx_) != 0) {
        aicmd_unregister_library(&library_);
        return false;
    }
    started_ = true;
    return true;
}

bool AicmdModule::stop() {
    if (!started_ || aicmd_unregister_library(&library_) != 0) {
        return false;
    }
    started_ = false;
    return true;
}

}  // namespace nuv
