// Runs a fuzz target over every file of the corpus folder named on the command
// line, so that the normal test run replays the corpus without libFuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>

#include "tests/support/TempDir.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    int inputs = 0;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(argc > 1 ? argv[1] : "")) {
        if (!entry.is_regular_file()) continue;
        const std::string bytes = vantorin::testing::ReadNativeFile(entry.path().string());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++inputs;
    }
    std::printf("replayed %d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
