#include "fuzzFile.h"

/// Structure files of every kind and the small tables: every reader gets every trial.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    for (auto read : {&LanqorInputData::readMopFile, &LanqorInputData::readZmtFile,
                      &LanqorInputData::readXYZFile, &LanqorInputData::readMol2File,
                      &LanqorInputData::readStructureFile}) {
        LanqorInputData input(nullptr, file.path());
        requireSound(input, (input.*read)());
        input.createSphericalCoordinate();
    }
    LanqorInputData::checkTypeMopFile(file.path());
    const double parameters[3] = {0.2, 10.0, 6.0};
    LanqorInputData::readFileIndeces(file.path(), 3, parameters, 1);
    QString directory = file.path();
    QString prefix;
    QStringList names;
    QVector<int> first;
    QVector<int> second;
    LanqorInputData::readMolNameFile(directory, prefix, names, first, second);
    return 0;
}
