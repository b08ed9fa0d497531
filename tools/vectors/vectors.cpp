// SPDX-License-Identifier: Apache-2.0
#include "tools/vectors/vectors.hpp"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace nuv::test {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

class Reader {
public:
    explicit Reader(std::string stem) : stem_(std::move(stem)) {}

    void line(std::string_view text) {
        text = trimmed(text.substr(0, text.find('#')));
        if (text.starts_with('[') && text.ends_with(']')) {
            begin(stem_ + "-" + std::string(text.substr(1, text.size() - 2)));
        } else if (const auto colon = text.find(':'); colon != std::string_view::npos) {
            member(text.substr(0, colon), trimmed(text.substr(colon + 1)));
        } else if (!text.empty()) {
            if (samples_.empty()) {
                begin(stem_);
            }
            append(*octets_, text);
        }
    }

    std::vector<Sample> finish() {
        for (Sample& sample : samples_) {
            if (sample.written.empty() && sample.refused.empty()) {
                sample.written = sample.octets;
            }
        }
        return std::move(samples_);
    }

private:
    void begin(std::string name) {
        samples_.emplace_back().name = std::move(name);
        octets_ = &samples_.back().octets;
    }

    void member(std::string_view name, std::string_view value) {
        Sample& sample = samples_.at(samples_.size() - 1);
        if (name == "written") {
            octets_ = &sample.written;
        } else if (name == "error") {
            sample.error = value;
        } else if (name == "refused") {
            sample.refused = value;
        } else if (name == "fields") {
            sample.fields = value;
        } else if (name == "surplus") {
            sample.surplus = std::stoul(std::string(value));
        } else if (name == "maps") {
            sample.maps = from_hex(value).at(0);
        } else {
            throw std::runtime_error("no such member of a sample");
        }
    }

    static void append(Octets& octets, std::string_view text) {
        const auto digits = static_cast<std::size_t>(std::ranges::count_if(
            text, [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }));
        const auto blanks = static_cast<std::size_t>(std::ranges::count(text, ' '));
        if (digits % 2 != 0 || digits + blanks != text.size()) {
            throw std::runtime_error("no octets");
        }
        const Octets more = from_hex(text);
        octets.insert(octets.end(), more.begin(), more.end());
    }

    std::string stem_;
    std::vector<Sample> samples_;
    Octets* octets_ = nullptr;
};

}  // namespace

std::vector<Sample> read_vectors(const std::filesystem::path& file) {
    std::ifstream in(file);
    if (!in) {
        throw std::runtime_error("cannot read " + file.string());
    }
    Reader reader(file.stem().string());
    unsigned number = 0;
    for (std::string text; std::getline(in, text);) {
        ++number;
        try {
            reader.line(text);
        } catch (const std::exception& e) {
            throw std::runtime_error(file.string() + ":" + std::to_string(number) + ": " +
                                     e.what());
        }
    }
    return reader.finish();
}

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

}  // namespace nuv::test
