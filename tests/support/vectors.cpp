// SPDX-License-Identifier: Apache-2.0
#include "tests/support/vectors.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace nuv::test {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string unescaped(std::string_view text) {
    std::string bytes;
    for (; !text.empty(); text.remove_prefix(1)) {
        bytes += text[0];
        if (text[0] == '\\' && text.size() > 1) {
            text.remove_prefix(1);
            bytes.back() = text[0] == 'n' ? '\n' : text[0] == 't' ? '\t' : text[0];
            if (text[0] == 'x') {
                bytes.back() = static_cast<char>(from_hex(text.substr(1, 2)).at(0));
                text.remove_prefix(2);
            }
        }
    }
    return bytes;
}

std::vector<Sample> read_vectors(const std::filesystem::path& file) {
    const std::map<std::string_view, std::string Sample::*> texts{{"error", &Sample::error},
                                                                  {"refused", &Sample::refused},
                                                                  {"fields", &Sample::fields},
                                                                  {"text", &Sample::text}};
    std::vector<Sample> samples;
    Octets* octets = nullptr;
    const auto begin = [&](const std::string& name) {
        samples.emplace_back().name = file.stem().string() + name;
        octets = &samples.back().octets;
    };
    const auto read = [&](std::string_view line) {
        const auto colon = std::min(line.find(':'), line.size());
        const std::string_view member = line.substr(0, colon);
        const std::string value(trimmed(line.substr(std::min(colon + 1, line.size()))));
        if (line.starts_with('[') && line.ends_with(']')) {
            begin("-" + std::string(line.substr(1, line.size() - 2)));
        } else if (member == "written") {
            octets = &samples.at(samples.size() - 1).written;
        } else if (member == "surplus") {
            samples.back().surplus = std::stoul(value);
        } else if (member == "maps") {
            samples.back().maps = from_hex(value).at(0);
        } else if (colon < line.size()) {
            samples.back().*texts.at(member) = unescaped(value);
        } else if (!line.empty()) {
            if (samples.empty()) {
                begin("");
            }
            std::ranges::copy(from_hex(line), std::back_inserter(*octets));
        }
    };
    std::ifstream in(file);
    unsigned number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        try {
            read(trimmed(std::string_view(line).substr(0, line.find('#'))));
        } catch (const std::exception& e) {
            throw std::runtime_error(file.string() + ":" + std::to_string(number) + ": " +
                                     e.what());
        }
    }
    for (Sample& sample : samples) {
        if (sample.written.empty() && sample.refused.empty()) {
            sample.written = sample.octets;
        }
    }
    return samples;
}

}  // namespace

std::vector<Sample> vectors(std::string_view prefix) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(NUV_TEST_VECTORS)) {
        if (entry.path().filename().string().starts_with(prefix)) {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    std::vector<Sample> samples;
    for (const auto& file : files) {
        std::ranges::move(read_vectors(file), std::back_inserter(samples));
    }
    return samples;
}

std::vector<ListedCase> listed_cases(const std::string& name) {
    std::ifstream file(NUV_TEST_VECTORS "/" + name);
    std::vector<ListedCase> cases;
    for (std::string line; std::getline(file, line);) {
        const std::size_t tab = line.find('\t');
        if (tab != std::string::npos && line[0] != '#') {
            cases.push_back({unescaped(line.substr(0, tab)), unescaped(line.substr(tab + 1))});
        }
    }
    if (cases.empty()) {
        throw std::runtime_error("no cases in " + name);
    }
    return cases;
}

}  // namespace nuv::test
