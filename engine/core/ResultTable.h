#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

/// A column of a table of results, or a value of a record.
struct ResultColumn
{
    QString key;  ///< words in lower case joined by "_"; that of an index tells its base
    QString unit; ///< of a quantity, "1" when dimensionless, "unit" when the column of this key
                  ///< tells it row by row; empty for an index or a text
    QString uncertaintyOf = {}; ///< key of the quantity whose uncertainty it is; empty: a value
};

/// A named part of the results of a calculation: a table, or a record of single values.
struct ResultTable
{
    QString name; ///< as a key
    bool isRecord = false;
    QVector<ResultColumn> columns;
    QVector<QVector<QVariant>> rows; ///< one for a record; an invalid value does not exist
};
