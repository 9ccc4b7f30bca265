#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/ResultTable.h>

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

class LanqorResultTablesPrivate;

/// Results of a calculation as data for other programs: named tables and records, written as
/// JSON or CSV. A value type; names and keys are written as they are given.
///
/// A value is a number, a text, a truth value, or invalid for one that does not exist. Numbers
/// are written with as many digits as bring back the same bits, in the C locale.
class LANQORENGINE_EXPORT LanqorResultTables
{
public:
    LanqorResultTables();
    LanqorResultTables(const LanqorResultTables &other);
    LanqorResultTables &operator=(const LanqorResultTables &other);
    ~LanqorResultTables();

    /// Adds a set of single values, one for each of @p columns.
    void addRecord(const QString &name, const QVector<ResultColumn> &columns,
                   const QVector<QVariant> &values);
    /// Adds a table, each row with one value for each of @p columns. Values that a row lacks do
    /// not exist, those beyond the columns are dropped; so it is with a record.
    void addTable(const QString &name, const QVector<ResultColumn> &columns,
                  const QVector<QVector<QVariant>> &rows);
    /// Adds the parts of @p other behind those that are here.
    void append(const LanqorResultTables &other);

    /// All parts in the order in which they were added.
    QVector<ResultTable> getTables() const;

    /// One object (UTF-8): a record is an object, a table an array of objects, both under their
    /// names. Every quantity is an object of value, unit and, where it has one, uncertainty, an
    /// object too; a value that does not exist or is not finite, which JSON cannot express, is
    /// null. Beside them "contents" tells the version of this scheme and parts and columns in
    /// their order, with the types of the values.
    QByteArray toJson() const;
    /// Takes the parts from what toJson() wrote; on failure false and unchanged, with the reason
    /// in @p error: no JSON, none of these results, of another version, or damaged.
    bool readJson(const QByteArray &json, QString &error);
    /// Version of the scheme of JSON and CSV. 1 had no contents.
    static int getSchemaVersion();
    /// The parts one after another (UTF-8, fields as in RFC 4180 with "\n" at the ends of lines),
    /// each headed by "# name" and followed by an empty line. A record has the columns quantity,
    /// value and unit; a table a heading of keys, that of a quantity with its unit in brackets; an
    /// uncertainty has a row or a column of its own. Values that do not exist or are not finite
    /// are empty.
    QByteArray toCsv() const;

private:
    std::unique_ptr<LanqorResultTablesPrivate> d;
};
