#include "fuzz/Support.h"
#include <FrameworkBase/Base/Debug.h>

#include <fstream>
#include <iterator>

/// Runs the fuzz target over every file of a folder, small ones cut at every place. <iostream> is left to the library.
int main(int /*count*/, char** arguments) {
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        for (std::size_t size = input.size() < 100 ? 0 : input.size(); size <= input.size(); ++size) {
            LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(input.data()), size);
        }
        ++inputs;
    }
    Tolvex::Debug::TraceRelease("%d inputs", inputs);
    return inputs > 0 ? 0 : 1;
}
