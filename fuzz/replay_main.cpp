// SPDX-License-Identifier: Apache-2.0
// Feeds every file of a folder to the fuzz target that it is linked with, without a fuzzer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// Exactly as large as the file: a read past the end is a read past the allocation.
std::vector<std::uint8_t> read_file(const std::filesystem::path& path) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::filesystem::file_size(path)));
    std::ifstream in(path, std::ios::binary);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!in) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return bytes;
}

void replay(const std::filesystem::path& folder) {
    const std::filesystem::directory_iterator entries(folder);
    std::vector<std::filesystem::path> files(begin(entries), end(entries));
    std::sort(files.begin(), files.end());
    if (files.empty()) {
        throw std::runtime_error("no input in " + folder.string());
    }
    for (const auto& file : files) {
        // Flushed before the call: after a crash the last line names the input.
        std::cout << file.filename().string() << std::endl;
        const auto bytes = read_file(file);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::cout << files.size() << " inputs replayed\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " CORPUS_FOLDER\n";
        return 2;
    }
    replay(argv[1]);
}
