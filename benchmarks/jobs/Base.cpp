#include "benchmarks/Inputs.h"
#include <FrameworkBase/Base/internal/DateTime.h>
#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include <ctime>

namespace {

[[gnu::noinline]] std::string ComposeByHand(std::string folder, std::string name) {
    if (folder.empty()) {
        return name;
    }
    folder.reserve(folder.size() + 1 + name.size());
    if (folder.back() != '/') {
        folder += '/';
    }
    folder += name;
    return folder;
}

[[gnu::noinline]] long long ClockByHand() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return 116'444'736'000'000'000 + now.tv_sec * 10'000'000 + now.tv_nsec / 100;
}

const Registration base([] {
    OnPath("compose", library, [](Parts parts) { return Tolvex::FileNames::ComposePath(parts.folder, parts.name); });
    OnPath("compose", limit, [](Parts parts) { return ComposeByHand(parts.folder, parts.name); });
    const auto nothing = [](long) { return std::tuple(); };
    Measure("clock/time now", {1}, library, nothing, VarnelNative::Utility::DateTime::Now);
    Measure("clock/time now", {1}, limit, nothing, ClockByHand);
});

} // namespace
