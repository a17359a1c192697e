#pragma once

#include <FrameworkBase/Base/Export.h>

#include <string>
#include <vector>

namespace Tolvex {

/// @addtogroup file_types
/// The extensions that the workstation knows, without their dots. Every source file that
/// includes this header has its own copies: compare values, not addresses.
/// @{

const std::string FileExtensionSng = "sng";                 ///< song
const std::string FileExtensionWav = "wav";                 ///< wave audio
const std::string FileExtensionWav64 = "w64";               ///< wave audio with 64-bit sizes
const std::string FileExtensionSgw = "sgw";                 ///< song
const std::string FileExtensionEdl = "txt";                 ///< edit list, a text file; see also FileExtensionEdl2
const std::string FileExtensionEdl2 = "edl";                ///< edit list
const std::string FileExtensionAiff = "aif";                ///< AIFF audio, three letters; see also FileExtensionAiff2
const std::string FileExtensionAiff2 = "aiff";              ///< AIFF audio
const std::string FileExtensionAiffC = "afc";               ///< compressed AIFF audio
const std::string FileExtensionMp3 = "mp3";                 ///< MP3 audio
const std::string FileExtensionWma = "wma";                 ///< Windows Media audio
const std::string FileExtensionOgg = "ogg";                 ///< Ogg audio
const std::string FileExtensionMidi = "mid";                ///< MIDI
const std::string FileExtensionCda = "cda";                 ///< track of an audio CD
const std::string FileExtensionDll = "dll";                 ///< Windows library
const std::string FileExtensionAx = "ax";                   ///< Windows media filter
const std::string FileExtensionFlac = "fla";                ///< FLAC audio, three letters; see also FileExtensionFlac2
const std::string FileExtensionFlac2 = "flac";              ///< FLAC audio
const std::string FileExtensionM4a = "m4a";                 ///< MPEG-4 audio
const std::string FileExtensionAaf = "aaf";                 ///< AAF interchange project
const std::string FileExtensionOmf = "omf";                 ///< OMF interchange project
const std::string FileExtensionRex = "rex";                 ///< sliced loop
const std::string FileExtensionRex2 = "rx2";                ///< sliced loop, second form
const std::string FileExtensionRcy = "rcy";                 ///< loop project
const std::string FileExtensionSSPlaylist = "tspl";         ///< playlist
const std::string FileExtensionTolvexEncryptedFlac = "twf"; ///< encrypted FLAC audio
const std::string FileExtensionSngFolder = "sng";           ///< song folder: named like a song
const std::string FileExtensionTolvexEncryptedWav = "tww";  ///< encrypted wave audio
const std::string FileExtensionDawProject = "dawproject";   ///< interchange project

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

/// The extensions of audio and MIDI files, those of CD tracks, media filters and interchange projects ("cda", "ax",
/// "aaf", "omf") among them.
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

/// @}

namespace FileNames {

/// @addtogroup file_types
/// @{

/// Returns true if `path`, up to its first zero byte, ends in a dot and one of "sng", "sgw", "sngw", "txt", "edl",
/// "aaf" or "omf". Letter case is ignored by the rules of the current locale. The disk is not touched: a folder of such
/// a name counts, too. Callable from any thread.
///
///     "Mix.SNG"   => true      "take.wav"     => false
///     "notes.txt" => true      "a.dawproject" => false
///     ".sng"      => true      "sng"          => false
FRAMEWORKBASE_EXPORT bool IsSongFile(std::string path);

/// Returns true if "Tolvex.db" in `folder` can be opened for reading, as a folder of that name can. Returns false for
/// the empty string. Callable from any thread.
FRAMEWORKBASE_EXPORT bool IsSongFolder(std::string folder);

/// @}

} // namespace FileNames
} // namespace Tolvex
