#pragma once

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QString>
#include <QVector>

/// Reads the force constants between atom 1 and its neighbours from a MOPAC text output.
///
/// The matrix "FORCE MATRIX IN MILLIDYNES/ANGSTROM" is printed as a lower triangle with one value
/// a pair of atoms, in blocks of six columns; a long block repeats its column title every 42
/// rows. The constants of atom 1 are the first value of each row of the first block.
class MopacForceMatrixReader
{
public:
    explicit MopacForceMatrixReader(const InputFile &file);

    bool open() { return reader.open(); }
    /// Constants, mdyn/Angstrom, of atoms 2 to @p count + 1 in @p constants; when several jobs
    /// print a matrix, those of the last. False unless all of them can be read.
    bool read(int count, QVector<double> &constants);

private:
    bool readMatrix(int count, QVector<double> &constants);
    bool readRow(int atom, double &constant);

    LineReader reader;
    textFields::Fields fields;
};
