#include "benchmarks/peers/Filesystem.h"

#include <boost/filesystem.hpp>

namespace fs = boost::filesystem;

static const Registration boostFilesystem([] {
    AddFilesystem<fs::path, fs::directory_iterator, fs::copy_options>("Boost");
});
