#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>

namespace Tolvex::FileNames {

/// @addtogroup extensions
/// Texts in, texts out; the disk is not touched, nothing fails, and everything is callable from any thread. Only
/// "/" separates. An extension is passed with its leading dot and appended as it is, unless said otherwise.
///
/// What counts as an extension differs from function to function, and callers rely on each of them. Two rules occur
/// where a dot has to be chosen: the last of the whole text; or the last of the file name, which is the last of the
/// text unless a "/" follows it.
/// @{

/// The text from the last dot of the file name on, the dot included. The whole name when there is none:
/// AppendStringBeforeExtension and its callers rely on that. `name` is not modified.
///
///     "take.wav"   => ".wav"        "a.tar.gz" => ".gz"
///     "take"       => "take"        ".hidden"  => ".hidden"
///     "/a.b/take"  => "/a.b/take"   "take."    => "."
FRAMEWORKBASE_EXPORT std::string GetExtension(std::string& name);

/// The text after the last dot, wherever it stands; "." when nothing follows it; empty when there is no dot.
///
///     "a.tar.gz" => "gz"     "a."     => "."
///     ".wav"     => "wav"    "."      => "."
///     "wav"      => ""       "/a.b/c" => "b/c"
FRAMEWORKBASE_EXPORT std::string GetExtensionWithoutDot(std::string name);

/// Replaces, in place, the text from the last dot on, wherever it stands, by "." and `ext`, which is passed without its
/// dot. The buffer must have room for the result; nothing checks it. Always 1.
///
///     ("take.aif", "wav") => "take.wav"     ("take", "wav") => "take.wav"
///     ("/a.b/c", "wav")   => "/a.wav"
FRAMEWORKBASE_EXPORT int extension_change(char* name, char* ext);

/// Replaces the text from the last dot of the file name on by `ext`, appended as it is.
///
///     ("a.txt", ".wav") => "a.wav"     ("/x.y/a", ".wav") => "/x.y/a.wav"
///     ("a", ".wav")     => "a.wav"     ("a.txt", "wav")   => "awav"
FRAMEWORKBASE_EXPORT std::string ExtensionChange(std::string name, std::string ext);

/// Returns `name` unchanged if it has the extension already, and otherwise as ExtensionChange does. What is looked for
/// is what follows the last dot of `ext`: "take.gz" has the extension ".tar.gz". Letter case is ignored, by the rules
/// of the locale in force: that of ASCII in the C locale. A name shorter than the dot and the whole extension does not
/// have it; of a longer one the end is compared with the dot and the first 48 characters of the extension. `name` ends
/// at its first zero byte for the test.
///
///     ("Take.WAV", ".wav") => "Take.WAV"     ("take", ".wav") => "take.wav"
///     ("take.aif", ".wav") => "take.wav"     ("take.", "wav") => "take."
///     ("take.gz", ".tar.gz") => "take.gz"
FRAMEWORKBASE_EXPORT std::string ForceExtension(std::string name, std::string ext);

/// Whether there is a dot anywhere, in a folder name too.
///
///     "a.wav" => true     ".x"     => true
///     "abc"   => false    "/a.b/c" => true
FRAMEWORKBASE_EXPORT bool HasExtension(std::string name);

/// `name` as it is when it has the extension already, by the test of ForceExtension; otherwise with `ext` appended.
///
///     ("a.wav", ".wav") => "a.wav"     ("a.mp3", ".wav") => "a.mp3.wav"
///     ("a", ".wav")     => "a.wav"
FRAMEWORKBASE_EXPORT std::string CheckAppendExtension(std::string name, std::string ext);

/// The text before the last dot, wherever it stands, folders included; all of it when there is no dot.
///
///     "/a/b/take.wav" => "/a/b/take"     "/a.b/take" => "/a"
///     "a."            => "a"             ".x"        => ""
FRAMEWORKBASE_EXPORT std::string GetFilenameWithoutExtension(std::string name);

/// Puts `text` before the extension. A name without one gets `text` and then, because that is its GetExtension, itself
/// again.
///
///     ("take.wav", " 2") => "take 2.wav"     ("take", " 2") => "take 2take"
///     ("/a.b/c", "x")    => "/a.b/cx/a.b/c"
FRAMEWORKBASE_EXPORT std::string AppendStringBeforeExtension(std::string name, std::string text);

/// Puts `text` before the last component.
///
///     ("/a/take.wav", "old ") => "/a/old take.wav"     ("take.wav", "old ") => "old take.wav"
///     ("/a/", "old ")         => "/a/old "
FRAMEWORKBASE_EXPORT std::string AppendStringBeforeFilename(std::string path, std::string text);

/// @}

} // namespace Tolvex::FileNames
