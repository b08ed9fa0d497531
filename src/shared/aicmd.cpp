// SPDX-License-Identifier: Apache-2.0
#include "nuv/aicmd.hpp"

#include <stdexcept>
#include <utility>

namespace nuv {

Aicmd::Aicmd(std::shared_ptr<nuvipc> ipc, std::string name)
    : ipc_(std::move(ipc)),
      name_(std::move(name)),
      commands_{{"HELP [command]", aicmd_help, "show help"},
                {"SLABDUMP", aicmd_slabdump, "show slab allocation"},
                {"SLABSHOW", aicmd_slabshow, "show slab information"},
                {"QUIT", aicmd_quit, "disconnect"}},
      listener_{name_.c_str(), commands_.data(), static_cast<std::uint32_t>(commands_.size()), {}} {
    if (ipc_ == nullptr) {
        return;
    }
    if (const int result = aicmd_listen_start(ipc_.get(), &listener_, 0, 0, 0, 0, 0)) {
        throw std::runtime_error("aicmd_listen_start() failed with error code " +
                                 std::to_string(result));
    }
}

Aicmd::~Aicmd() {
    for (const auto& [name, module] : modules_) {
        module->stop();
    }
}

std::shared_ptr<AicmdModule> Aicmd::create_module(const std::string& name, void* ctx) {
    if (modules_.contains(name)) {
        return nullptr;
    }
    return modules_[name] = std::make_shared<AicmdModule>(name, ctx);
}

std::shared_ptr<AicmdModule> Aicmd::get_module(const std::string& name) const {
    const auto found = modules_.find(name);
    return found != modules_.end() ? found->second : nullptr;
}

bool Aicmd::remove_module(const std::string& name) { return !modules_.extract(name).empty(); }

}  // namespace nuv
