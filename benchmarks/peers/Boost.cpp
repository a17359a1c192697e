#include "benchmarks/peers/Filesystem.h"
#include <boost/filesystem.hpp>

static const Registration boostFilesystem([] {
    AddFilesystem<boost::filesystem::path, boost::filesystem::directory_iterator, boost::filesystem::copy_options>(
        "Boost");
});
