// SPDX-License-Identifier: Apache-2.0
#include <grp.h>
#include <pwd.h>

#include <cstring>
#include <iostream>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "json/writer.hpp"
#include "nuv_platform/nuvipc.h"

namespace nuvctl {

namespace {

std::string name_of_user(std::uint32_t uid) {
    const passwd* const entry = getpwuid(uid);
    return entry != nullptr ? entry->pw_name : std::to_string(uid);
}

std::string name_of_group(std::uint32_t gid) {
    const group* const entry = getgrgid(gid);
    return entry != nullptr ? entry->gr_name : std::to_string(gid);
}

int print_endpoint(const nuvipc_endpoint* endpoint, void* ctx) {
    constexpr std::uint32_t group_may_write = 020;
    write_object(std::cout, false, [&](Json& json) {
        json.text("name", endpoint->name);
        json.boolean("alive", endpoint->alive != 0);
        json.number("pid", static_cast<std::uint64_t>(endpoint->pid));
        if (static_cast<const EndpointsOptions*>(ctx)->access) {
            json.text("user", name_of_user(endpoint->uid));
            json.text("group", name_of_group(endpoint->gid));
            json.open_list("callers");
            json.text({}, "root");
            json.text({}, "user " + name_of_user(endpoint->uid));
            if ((endpoint->mode & group_may_write) != 0) {
                json.text({}, "group " + name_of_group(endpoint->gid));
            }
            json.close_list();
        }
    });
    return 0;
}

}  // namespace

int run_endpoints(const EndpointsOptions& options) {
    EndpointsOptions copy = options;
    const int result = nuvipc_list(print_endpoint, &copy);
    if (result < 0) {
        report(std::string("the endpoints cannot be read: ") + std::strerror(-result));
        return 1;
    }
    return 0;
}

}  // namespace nuvctl
