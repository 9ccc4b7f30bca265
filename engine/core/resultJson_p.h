#pragma once

#include <LanqorEngine/ResultTable.h>

#include <QVector>

class LanqorResultTablesPrivate
{
public:
    QVector<ResultTable> tables;
};

/// Keys of results in JSON, beside those of their parts and columns.
namespace resultJson {

constexpr char contentsKey[] = "contents";
constexpr char valueKey[] = "value";
constexpr char unitKey[] = "unit";
constexpr char uncertaintyKey[] = "uncertainty";

inline bool isQuantity(const ResultColumn &column)
{
    return !column.unit.isEmpty();
}

} // namespace resultJson
