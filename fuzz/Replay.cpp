#include "fuzz/Support.h"

#include <fstream>
#include <iterator>

/// Runs the fuzz target it is linked to over every file of a folder. For machines without a fuzzer.
int main(int /*count*/, char** arguments) {
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(input.data()), input.size());
        ++inputs;
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
