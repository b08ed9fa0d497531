// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "nuv/aicmd_module.hpp"
#include "nuv/export.hpp"
#include "nuv_platform/aicmd.h"

namespace nuv {

/// The debug commands of a process: HELP, SLABDUMP, SLABSHOW, QUIT and those of its modules.
class NUV_EXPORT Aicmd {
public:
    /// Answers commands for the endpoint `ipc`, until that is destroyed. Without an endpoint there are
    /// only modules: the listener of the process that hosts this one answers their commands.
    /// Throws std::runtime_error when the platform refuses.
    Aicmd(std::shared_ptr<nuvipc> ipc, std::string name);
    Aicmd(const Aicmd&) = delete;
    Aicmd& operator=(const Aicmd&) = delete;
    /// Stops its modules, including those that others hold.
    ~Aicmd();

    /// Returns an empty pointer when there is a module of this name already.
    std::shared_ptr<AicmdModule> create_module(const std::string& name, void* ctx);
    /// Returns an empty pointer when there is no such module.
    std::shared_ptr<AicmdModule> get_module(const std::string& name) const;
    /// Forgets the module, which stops unless others hold it. Returns false when there is none.
    bool remove_module(const std::string& name);

private:
    std::shared_ptr<nuvipc> ipc_;
    std::string name_;
    std::vector<aicmd_command> commands_;
    aicmd_listener listener_{};
    std::map<std::string, std::shared_ptr<AicmdModule>> modules_;
};

}  // namespace nuv
