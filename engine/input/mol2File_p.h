#pragma once

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <LanqorEngine/Coord.h>

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace structureFiles {

/// A bond between two atoms of a structure, 0-based.
struct Bond
{
    int first = 0;
    int second = 0;
    QString type; ///< "1", "2", "am", "ar", ... as the file has it
};

/// A molecule of a MOL2 file.
struct Mol2Molecule
{
    QVector<Coord> atoms;  ///< labelled by element
    QStringList atomNames; ///< one an atom, as the file has them
    QStringList atomTypes; ///< one an atom, as the file has them
    QVector<Bond> bonds;
    int residues = 0;
    QString error;     ///< why the atoms cannot be used; empty when they can
    QString bondError; ///< why the bonds cannot be used
};

/// Reads a Tripos MOL2 file molecule by molecule: the sections @<TRIPOS>MOLECULE, ATOM and BOND;
/// all others are passed over.
///
/// The element of an atom is its type up to the dot, since atom names are free ("CE" is a
/// carbon); only where the type is no element, as a dummy type of a metal or a type of a force
/// field in small letters, the name tells it.
class Mol2Reader
{
public:
    explicit Mol2Reader(const InputFile &file);

    bool open() { return reader.open(); }
    /// Reads the next molecule; false when none is left.
    bool next(Mol2Molecule &molecule);

private:
    enum class Row { Data, Skipped, EndOfSection };

    Row nextRow();
    void readHeader();
    void readAtoms(Mol2Molecule &molecule);
    void readBonds(Mol2Molecule &molecule);

    LineReader reader;
    textFields::Fields fields;
    QHash<int, int> indexOfNumber; // of the atoms of the current molecule
    int announcedAtoms = 0;        // 0 when the file does not tell
};

} // namespace structureFiles
