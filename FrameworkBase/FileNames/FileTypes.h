#pragma once

#include "FrameworkBase/Base/Export.h"

#include <string>
#include <vector>

/// @addtogroup file_types
/// The extensions that the workstation knows, without their dots. Every source file that includes this header has
/// copies of its own.
/// @{

namespace Tolvex {

const std::string FileExtensionSng = "sng";
const std::string FileExtensionWav = "wav";
const std::string FileExtensionWav64 = "w64";
const std::string FileExtensionSgw = "sgw";
const std::string FileExtensionEdl = "txt"; ///< edit lists are texts; see also FileExtensionEdl2
const std::string FileExtensionEdl2 = "edl";
const std::string FileExtensionAiff = "aif";
const std::string FileExtensionAiff2 = "aiff";
const std::string FileExtensionAiffC = "afc";
const std::string FileExtensionMp3 = "mp3";
const std::string FileExtensionWma = "wma";
const std::string FileExtensionOgg = "ogg";
const std::string FileExtensionMidi = "mid";
const std::string FileExtensionCda = "cda";
const std::string FileExtensionDll = "dll";
const std::string FileExtensionAx = "ax";
const std::string FileExtensionFlac = "fla"; ///< three letters; see also FileExtensionFlac2
const std::string FileExtensionFlac2 = "flac";
const std::string FileExtensionM4a = "m4a";
const std::string FileExtensionAaf = "aaf";
const std::string FileExtensionOmf = "omf";
const std::string FileExtensionRex = "rex";
const std::string FileExtensionRex2 = "rx2";
const std::string FileExtensionRcy = "rcy";
const std::string FileExtensionSSPlaylist = "tspl";
const std::string FileExtensionTolvexEncryptedFlac = "twf";
const std::string FileExtensionSngFolder = "sng"; ///< a song folder is named like a song file
const std::string FileExtensionTolvexEncryptedWav = "tww";
const std::string FileExtensionDawProject = "dawproject";

/// The empty extension and then all of the above in their order: entry k is the k-th, counted from 1.
const std::vector<std::string> FileExtensionStrings = {
    "",
    FileExtensionSng,
    FileExtensionWav,
    FileExtensionWav64,
    FileExtensionSgw,
    FileExtensionEdl,
    FileExtensionEdl2,
    FileExtensionAiff,
    FileExtensionAiff2,
    FileExtensionAiffC,
    FileExtensionMp3,
    FileExtensionWma,
    FileExtensionOgg,
    FileExtensionMidi,
    FileExtensionCda,
    FileExtensionDll,
    FileExtensionAx,
    FileExtensionFlac,
    FileExtensionFlac2,
    FileExtensionM4a,
    FileExtensionAaf,
    FileExtensionOmf,
    FileExtensionRex,
    FileExtensionRex2,
    FileExtensionRcy,
    FileExtensionSSPlaylist,
    FileExtensionTolvexEncryptedFlac,
    FileExtensionSngFolder,
    FileExtensionTolvexEncryptedWav,
    FileExtensionDawProject,
};

/// The extensions of audio and MIDI files, those of containers and of devices included.
const std::vector<std::string> AudioAndMidiFileExtensionsString = {
    FileExtensionWav,
    FileExtensionWav64,
    FileExtensionAiff,
    FileExtensionAiff2,
    FileExtensionAiffC,
    FileExtensionMp3,
    FileExtensionWma,
    FileExtensionOgg,
    FileExtensionMidi,
    FileExtensionCda,
    FileExtensionAx,
    FileExtensionFlac,
    FileExtensionFlac2,
    FileExtensionM4a,
    FileExtensionAaf,
    FileExtensionOmf,
    FileExtensionTolvexEncryptedFlac,
    FileExtensionTolvexEncryptedWav,
};

namespace FileNames {

/// Whether `path`, up to its first zero byte, ends in a dot and one of "sng", "sgw", "sngw", "txt", "edl", "aaf" or
/// "omf", ASCII letter case ignored. The disk is not touched, and the path is not split: a folder of such a name counts
/// too. Callable from any thread.
///
///     "Mix.SNG"   => true      "take.wav"     => false
///     "notes.txt" => true      "a.dawproject" => false
///     ".sng"      => true      "sng"          => false
FRAMEWORKBASE_EXPORT bool IsSongFile(std::string path);

/// Whether `folder` holds a file "Tolvex.db" that can be opened for reading. False for the empty string. Callable from
/// any thread.
FRAMEWORKBASE_EXPORT bool IsSongFolder(std::string folder);

} // namespace FileNames
} // namespace Tolvex

/// @}
