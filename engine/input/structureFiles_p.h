#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordZMT.h>

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// Readers of structure files. None of these formats needs a LanqorInputData; it keeps what
/// they return and passes on the error.
namespace structureFiles {

/// What becomes of the "Tv" rows of a periodic structure.
enum class TranslationVectors { Drop, Keep };

/// A structure as read; @p error is empty when all of it could be.
struct Structure
{
    QVector<Coord> atoms;         ///< without dummy atoms
    QVector<CoordZMT> zMatrix;    ///< with dummy atoms; empty for Cartesian files
    int residues = 0;             ///< of a MOL2 file
    std::optional<double> charge; ///< of the system, where the file tells it, elementary charges
    QStringList warnings;         ///< of a crystal structure
    QString error;
};

enum class Kind { Unknown, MopacOutput, MopacArchive, Mop, Zmt, Xyz, Mol2, Cif, Pdb };

/// The three numbers from field @p first on; false when they are not numbers.
bool readPosition(const textFields::Fields &fields, std::size_t first, Coord &atom);

/// The message for an atom, labelled @p name in the file, that cannot belong to a structure: its
/// label is no element, or it lies beyond 1e4 Angstrom. Empty when neither is so.
QString impossibleAtom(const QString &fileName, qint64 lineNumber, const QString &name,
                       const Coord &atom);

/// The message for a row that cannot be read; @p expected tells what it should hold.
QString unreadableLine(const QString &fileName, qint64 lineNumber, const QString &expected);

/// Kind of a file by its suffix; without a telling one, by its first lines.
Kind kindOf(const InputFile &file);

/// Number of atoms, a title, then rows of symbol (or atomic number), x, y, z; further columns
/// and further frames are passed over.
Structure readXyz(const InputFile &file);
/// The atoms of the first molecule of a MOL2 file.
Structure readMol2(const InputFile &file);
/// Rows of symbol, distance, angle, dihedral and three references; the first three atoms may
/// leave out what they do not have, and optimisation flags may follow the values.
Structure readZmt(const InputFile &file);
/// A MOPAC input: comment lines "*", keywords, two title lines, then one row an atom up to a
/// blank line, Cartesian or internal, with or without optimisation flags.
Structure readMop(const InputFile &file, TranslationVectors vectors = TranslationVectors::Drop);

/// The final geometry of a MOPAC archive file; of several jobs, that of the last. It has the form
/// of a MOPAC input.
Structure readArc(const InputFile &file, TranslationVectors vectors = TranslationVectors::Drop);

/// A complex of a crystal structure (CIF or PDB), completed by its symmetry: the ion, the atoms in
/// bonding distance, then all others.
/// @param number  of the independent complexes, from 1; 0: the only one
Structure readCrystal(const InputFile &file, Kind kind, int number);

/// Keyword lines of a MOPAC input, joined; false when the file cannot be opened.
bool readMopKeywords(const InputFile &file, QString &keywords);
/// Whether the atoms of a MOPAC input are in internal coordinates; false when they cannot be
/// read.
bool readMopKind(const InputFile &file, bool &internal);

} // namespace structureFiles
