#include "benchmarks/Jobs.h"
#include <gio/gio.h>

static std::string Own(char* text) {
    std::string result = text == nullptr ? "" : text;
    g_free(text);
    return result;
}
static std::wstring ToWide(const char* text) {
    glong length = 0;
    gunichar* const wide = g_utf8_to_ucs4(text, -1, nullptr, &length, nullptr);
    std::wstring result(wide, wide + length);
    g_free(wide);
    return result;
}

const Registration glib([] {
    constexpr const char* who = "GLib";
    OnPath("compose", who,
           [](Parts parts) { return Own(g_build_filename(parts.folder.c_str(), parts.name.c_str(), nullptr)); });
    OnPath("last component", who, [](Parts parts) { return Own(g_path_get_basename(parts.path.c_str())); });
    OnPath("folder part", who, [](Parts parts) { return Own(g_path_get_dirname(parts.path.c_str())); });
    Measure(moveToOwnTrash, who, [] {
        GFile* const file = g_file_new_for_path(ItemOutside().c_str());
        g_file_trash(file, nullptr, nullptr);
        g_object_unref(file);
    });
    OnTexts(who, ToWide, [](const wchar_t* text) {
        return Own(g_ucs4_to_utf8(reinterpret_cast<const gunichar*>(text), -1, nullptr, nullptr, nullptr));
    });
});
