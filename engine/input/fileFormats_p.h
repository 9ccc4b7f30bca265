#pragma once

#include "input/lineReader_p.h"

#include <QString>

#include <string_view>

/// Which file a user has given, for messages about one of another kind than was wanted.
namespace fileFormats {

enum class Format {
    Unknown,
    MopacOutput,
    MopacArchive,
    MopacInput,
    OrcaOutput,
    GaussianOutput,
    ZindoOutput,
    NwchemOutput,
    XtbOutput,
    GaussianInput,
    OrcaInput,
    Xyz,
    Mol2,
    Mol,
    Cif,
    Pdb,
    Molden,
    Binary,
    Folder,
    NoRegularFile
};

/// The program of excited states that alone writes such a line: a title, or a heading for excerpts
/// without one. The first line that holds one decides: an ORCA or Gaussian output may well speak
/// of ZINDO, but later.
Format markedProgram(std::string_view line);

/// Told from the first lines of a file.
Format formatOf(const InputFile &file);

/// "an ORCA output"; empty for Unknown.
QString description(Format format);

} // namespace fileFormats
