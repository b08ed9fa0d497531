// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/vistrom.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "nuv_platform/clog.h"
#ifdef NUV_HAS_LIBUBOOTENV
#include <libuboot.h>
#endif

namespace {

void warn(int line, const std::string& text) {
    clogmod__warn(clogmod_get_or_alloc("vistrom"), "platform/linux/vistrom", "vistrom_getenv", line,
                  "%s", text.c_str());
}

/// As with the boot loader, the last of several lines for a key counts.
std::optional<std::string> value_in_file(const char* path, std::string_view key) {
    std::ifstream file(path);
    if (!file) {
        warn(__LINE__, std::string(path) + ": " + std::strerror(errno));
    }
    std::optional<std::string> value;
    for (std::string line; std::getline(file, line);) {
        if (line.size() > key.size() && line[key.size()] == '=' && line.starts_with(key)) {
            value = line.substr(key.size() + 1);
        }
    }
    return value;
}

#ifdef NUV_HAS_LIBUBOOTENV

constexpr const char* BOOT_LOADER_CONFIGURATION = "/etc/fw_env.config";

bool has_boot_loader() { return ::access(BOOT_LOADER_CONFIGURATION, F_OK) == 0; }

std::optional<std::string> value_of_boot_loader(const char* key) {
    struct Exit {
        void operator()(uboot_ctx* context) const { ::libuboot_exit(context); }
    };
    struct Free {
        // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
        void operator()(char* text) const { std::free(text); }
    };
    uboot_ctx* made = nullptr;
    const bool initialized = ::libuboot_initialize(&made, nullptr) >= 0;
    const std::unique_ptr<uboot_ctx, Exit> context(made);
    if (!initialized || ::libuboot_read_config(made, BOOT_LOADER_CONFIGURATION) < 0 ||
        ::libuboot_open(made) < 0) {
        warn(__LINE__, std::string(BOOT_LOADER_CONFIGURATION) +
                           ": the environment of the boot loader cannot be read");
        return std::nullopt;
    }
    const std::unique_ptr<char, Free> value(::libuboot_get_env(made, key));
    ::libuboot_close(made);
    return value != nullptr ? std::optional<std::string>(value.get()) : std::nullopt;
}

#else

bool has_boot_loader() { return false; }
std::optional<std::string> value_of_boot_loader(const char* /*key*/) { return std::nullopt; }

#endif

}  // namespace

extern "C" const char* vistrom_getenv(const char* key) {
    if (key == nullptr || *key == '\0' || std::strchr(key, '=') != nullptr) {
        return nullptr;
    }
    static std::optional<std::string> value;
    try {
        if (const char* const path = std::getenv("NUV_BOOT_ENV")) {
            value = value_in_file(path, key);
        } else if (has_boot_loader()) {
            value = value_of_boot_loader(key);
        } else {
            return std::getenv(key);
        }
    } catch (const std::exception&) {
        return nullptr;
    }
    return value ? value->c_str() : nullptr;
}
