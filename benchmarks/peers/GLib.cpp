#include "benchmarks/Inputs.h"

#include <gio/gio.h>
#include <memory>

namespace {

struct Free {
    void operator()(void* memory) const { g_free(memory); }
};
struct Unref {
    void operator()(GFile* file) const { g_object_unref(file); }
};

std::string Own(char* text) {
    const std::unique_ptr<char, Free> freed(text);
    return text == nullptr ? "" : text;
}

std::wstring ToWide(const char* text) {
    glong length = 0;
    const std::unique_ptr<gunichar, Free> wide(g_utf8_to_ucs4(text, -1, nullptr, &length, nullptr));
    return wide == nullptr ? std::wstring() : std::wstring(wide.get(), wide.get() + length);
}

const Registration glib([] {
    constexpr const char* who = "GLib";
    OnPath("compose", who,
           [](Parts parts) { return Own(g_build_filename(parts.folder.c_str(), parts.name.c_str(), nullptr)); });
    OnPath("last component", who, [](Parts parts) { return Own(g_path_get_basename(parts.path.c_str())); });
    OnPath("folder part", who, [](Parts parts) { return Own(g_path_get_dirname(parts.path.c_str())); });
    Measure(moveToOwnTrash, who, [] {
        const std::unique_ptr<GFile, Unref> file(g_file_new_for_path(ItemOutside().c_str()));
        g_file_trash(file.get(), nullptr, nullptr);
    });
    OnTexts(who, ToWide, [](const wchar_t* text) {
        return Own(g_ucs4_to_utf8(reinterpret_cast<const gunichar*>(text), -1, nullptr, nullptr, nullptr));
    });
});

} // namespace
