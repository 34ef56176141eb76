// Runs a fuzz target on every file of the directories that are named, without a fuzzing engine.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

int run_files(const char* directory) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        std::printf("%s\n", entry.path().c_str());
        std::fflush(stdout);
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        ++count;
    }
    return count;
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    try {
        for (int i = 1; i < argc; ++i)
            count += run_files(argv[i]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::printf("%d files\n", count);
    return count > 0 ? 0 : 1;
}
