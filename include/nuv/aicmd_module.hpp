// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "nuv/export.hpp"
#include "nuv_platform/aicmd.h"

namespace nuv {

/// A named group of debug commands. The process answers them between start() and stop(). For the thread
/// of the main loop.
class NUV_EXPORT AicmdModule {
public:
    /// The handlers get `ctx` from aicmd_session_ctx().
    AicmdModule(std::string name, void* ctx);
    AicmdModule(const AicmdModule&) = delete;
    AicmdModule& operator=(const AicmdModule&) = delete;
    /// Stops. A handler of this module may cause it. A failure is logged.
    ~AicmdModule();

    /// Adds a command before the start. `command` is its first word and, for people, its arguments.
    /// Returns false once the module is started.
    bool add_command(const std::string& command, const std::string& help, aicmd_handler handler);

    /// Returns false, and changes nothing, when the module is started already or the platform refuses:
    /// for example, a first word that is taken.
    bool start();
    /// Returns false when the module is not started or the platform refuses.
    bool stop();

    const std::string& get_name() const noexcept { return name_; }
    bool started() const noexcept { return started_; }

private:
    struct Command {
        std::string command;
        std::string help;
        aicmd_handler handler;
    };

    bool started_ = false;
    std::string name_;
    aicmd_library library_{};
    std::vector<Command> commands_;
    std::vector<aicmd_command> table_;  // of the library; points into commands_, made by start()
    void* ctx_;
};

}  // namespace nuv
