#include "text.h"

#include <QCoreApplication>

#include <QVector>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cli {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QString column(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

QString textOfYield(double percent)
{
    return std::abs(percent) >= 1.0 || percent == 0.0 ? QString::number(percent, 'f', 2)
                                                      : QString::number(percent, 'g', 3);
}

QString powerColumn(double value, int decimals, int width)
{
    return QString::number(value, 'e', decimals).rightJustified(width);
}

QString column(int value, int width)
{
    return QString::number(value).rightJustified(width);
}

namespace {

/// Letters to insert, delete or replace (V. I. Levenshtein, Sov. Phys. Dokl. 10, 707 (1966)).
int editDistance(const QString &first, const QString &second)
{
    QVector<int> row(second.size() + 1); // distances of the beginnings of second
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < first.size(); ++i) {
        int diagonal = row[0]++;
        for (int j = 0; j < second.size(); ++j) {
            const int replaced = diagonal + (first.at(i) == second.at(j) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.last();
}

} // namespace

QString nearestWord(const QString &word, const QStringList &words)
{
    QString nearest;
    int least = 1 + std::max(1, (word.size() + 1) / 3);
    for (const QString &candidate : words) {
        // a beginning is nearer than its length tells
        const bool isBeginning = word.size() > 2 && candidate.startsWith(word);
        const int distance = isBeginning ? 1 : editDistance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace cli
