#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup extensions
/// Functions from strings to strings. The disk is not touched. Only "/" is a separator. Pass an extension with its dot,
/// unless a function says otherwise; it is appended as it is. The only exception is `std::bad_alloc`. Callable from any
/// thread.
///
/// Functions use either the last dot of the whole string, which may be in the name of a folder, or the last dot of the
/// final component. Callers rely on each of them:
///
/// | Function | Which dot |
/// |---|---|
/// | GetExtension, ExtensionChange, ForceExtension, AppendStringBeforeExtension | the last of the final component |
/// | GetExtensionWithoutDot, GetFilenameWithoutExtension, extension_change | the last of the whole string |
/// | HasExtension | any |
/// @{

/// Returns the extension of the final component, with its dot. If there is none, returns the WHOLE `name`:
/// AppendStringBeforeExtension and its callers rely on that. `name` must not be a constant, although it is not
/// modified.
///
///     "take.wav"   => ".wav"        "a.tar.gz" => ".gz"
///     "take"       => "take"        ".hidden"  => ".hidden"
///     "/a.b/take"  => "/a.b/take"   "take."    => "."
FRAMEWORKBASE_EXPORT std::string GetExtension(std::string& name);

/// Returns what follows the last dot of the whole string: "." if nothing does, and the empty string if there is no dot.
///
///     "a.tar.gz" => "gz"     "a."     => "."
///     ".wav"     => "wav"    "."      => "."
///     "wav"      => ""       "/a.b/c" => "b/c"
FRAMEWORKBASE_EXPORT std::string GetExtensionWithoutDot(std::string name);

/// Replaces, in place, what follows the last dot of the whole string by `ext`, which is passed without its dot; appends
/// both if there is no dot. The buffer MUST HAVE ROOM for the result, which is not checked. `ext` must not be a
/// constant, although it is not modified. Returns 1.
///
///     ("take.aif", "wav") => "take.wav"     ("take", "wav") => "take.wav"
///     ("/a.b/c", "wav")   => "/a.wav"
FRAMEWORKBASE_EXPORT int extension_change(char* name, char* ext);

/// Replaces the extension of the final component by `ext`, or appends `ext` if there is none.
///
///     ("a.txt", ".wav") => "a.wav"     ("/x.y/a", ".wav") => "/x.y/a.wav"
///     ("a", ".wav")     => "a.wav"     ("a.txt", "wav")   => "awav"
FRAMEWORKBASE_EXPORT std::string ExtensionChange(std::string name, std::string ext);

/// Returns `name` unchanged if it already has the extension; otherwise replaces it as ExtensionChange does.
///
/// The extension that is looked for is what follows the last dot of `ext`: "take.gz" has the extension ".tar.gz".
/// Letter case is ignored by the rules of the current locale: that of ASCII in the C locale. A name that is shorter
/// than the dot and the extension does not have it; the end of a longer one is compared with the dot and the first 48
/// characters of the extension. For this test `name` ends at its first zero byte.
///
///     ("Take.WAV", ".wav") => "Take.WAV"     ("take", ".wav") => "take.wav"
///     ("take.aif", ".wav") => "take.wav"     ("take.", "wav") => "take."
///     ("take.gz", ".tar.gz") => "take.gz"
FRAMEWORKBASE_EXPORT std::string ForceExtension(std::string name, std::string ext);

/// Returns true if there is a dot anywhere in `name`.
///
///     "a.wav" => true     ".x"     => true
///     "abc"   => false    "/a.b/c" => true
FRAMEWORKBASE_EXPORT bool HasExtension(std::string name);

/// Returns `name` unchanged if it already has the extension, by the test of ForceExtension; otherwise appends `ext`.
///
///     ("a.wav", ".wav") => "a.wav"     ("a.mp3", ".wav") => "a.mp3.wav"
///     ("a", ".wav")     => "a.wav"
FRAMEWORKBASE_EXPORT std::string CheckAppendExtension(std::string name, std::string ext);

/// Returns what is before the last dot of the whole string, folders included, or all of it if there is no dot.
///
///     "/a/b/take.wav" => "/a/b/take"     "/a.b/take" => "/a"
///     "a."            => "a"             ".x"        => ""
FRAMEWORKBASE_EXPORT std::string GetFilenameWithoutExtension(std::string name);

/// Inserts `text` before the extension of the final component. If there is none, the result is `name`, `text` and
/// `name` again, as GetExtension returns the whole name.
///
///     ("take.wav", " 2") => "take 2.wav"     ("take", " 2") => "take 2take"
///     ("/a.b/c", "x")    => "/a.b/cx/a.b/c"
FRAMEWORKBASE_EXPORT std::string AppendStringBeforeExtension(std::string name, std::string text);

/// Inserts `text` before the final component.
///
///     ("/a/take.wav", "old ") => "/a/old take.wav"     ("take.wav", "old ") => "old take.wav"
///     ("/a/", "old ")         => "/a/old "
FRAMEWORKBASE_EXPORT std::string AppendStringBeforeFilename(std::string path, std::string text);

/// @}

} // namespace Tolvex::FileNames
