#include "TestSupport.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace {

using Row = QStringList;

QVector<Row> rows(const QString &path)
{
    QVector<Row> result;
    for (const QByteArray &line : testSupport::readAll(path).split('\n'))
        if (!line.isEmpty())
            result.append(QString::fromLatin1(line).split(QLatin1Char(' ')));
    return result;
}

QString table(int n, const char *suffix)
{
    return testSupport::sourceFile(
        QStringLiteral("data/EnergyLevels4f/f%1.%2").arg(n).arg(QLatin1String(suffix)));
}

// "-5/12" is minus the root of 5/12.
double signedRoot(const QString &square)
{
    const QStringList parts = square.split(QLatin1Char('/'));
    const double value = parts.at(0).toDouble() / (parts.size() > 1 ? parts.at(1).toDouble() : 1.0);
    return std::copysign(std::sqrt(std::abs(value)), value);
}

struct Published
{
    int n;
    const char *term, *parent, *signedSquare;
};

// C. W. Nielson and G. F. Koster, Spectroscopic Coefficients for the p^n, d^n and f^n
// Configurations (1963).
constexpr Published published[] = {
    {3, "4S", "3F", "1"},           {3, "4D", "3P", "-3/7"},     {3, "4D", "3F", "-2/9"},
    {3, "4D", "3H", "-22/63"},      {3, "2D1", "1G", "33/98"},   {3, "2F1", "1S", "2/7"},
    {3, "2F2", "1I", "91/396"},     {3, "2L", "3H", "-1/2"},     {4, "5I", "4I", "7/11"},
    {4, "3P2", "2G1", "-704/2205"}, {4, "3P2", "2F2", "11/480"}, {5, "6H", "5I", "91/165"},
    {5, "2F6", "3H4", "78/385"},    {5, "2F7", "3F4", "-9/40"},  {6, "3F8", "2F6", "169/1089"},
    {7, "2F6", "3F8", "-169/1694"}, {7, "2F", "3F9", "7/64"},    {7, "2F", "3H9", "-1375/8064"},
    {7, "2F", "1P", "13/1568"},
};

} // namespace

class Test4fTables : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void regenerated();
    void publishedCoefficients();
};

void Test4fTables::regenerated()
{
    QTemporaryDir folder;
    const QString phases = testSupport::sourceFile(QStringLiteral("tools/publishedPhases4f.txt"));
    QCOMPARE(QProcess::execute(QStringLiteral(GENERATE_4F_TABLES), {phases, folder.path()}), 0);
    for (int n = 1; n <= 7; ++n)
        for (const char *suffix : {"cfp", "ele", "cas"}) {
            const QVector<Row> stored = rows(table(n, suffix));
            const QVector<Row> made =
                rows(folder.filePath(QStringLiteral("f%1.%2").arg(n).arg(QLatin1String(suffix))));
            QCOMPARE(made.size(), stored.size());
            for (int i = 0; i < made.size(); ++i) {
                QCOMPARE(made.at(i).mid(0, 2), stored.at(i).mid(0, 2));
                QCOMPARE(made.at(i).size(), stored.at(i).size());
                for (int k = 2; k < made.at(i).size(); ++k)
                    COMPARE_NEAR(made.at(i).at(k).toDouble(), stored.at(i).at(k).toDouble(), 1e-10);
            }
        }
}

// The lines of "2F" and "2G" of f^7 count together with those of the other nine, as the reader
// takes them.
void Test4fTables::publishedCoefficients()
{
    for (const Published &expected : published) {
        double coefficient = 0.0;
        for (const Row &row : rows(table(expected.n, "cfp")))
            if (row.at(0).startsWith(QLatin1String(expected.term)) &&
                row.at(1) == QLatin1String(expected.parent))
                coefficient += row.at(2).toDouble();
        COMPARE_NEAR(coefficient, signedRoot(QLatin1String(expected.signedSquare)), 1e-14);
    }
}

QTEST_GUILESS_MAIN(Test4fTables)
#include "tst_4ftables.moc"
