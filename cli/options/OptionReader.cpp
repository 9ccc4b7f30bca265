#include "options/OptionReader.h"

#include "Command.h"
#include "text.h"

#include <LanqorEngine/LanqorReadFiles.h>

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>

namespace cli {

QStringList pictureSuffixes()
{
    return {QStringLiteral("svg"), QStringLiteral("png"), QStringLiteral("pdf")};
}

QStringList structureSuffixes()
{
    return {QStringLiteral("out"), QStringLiteral("arc"), QStringLiteral("mop"),
            QStringLiteral("zmt"), QStringLiteral("xyz"), QStringLiteral("mol2"),
            QStringLiteral("cif"), QStringLiteral("pdb")};
}

QStringList stateSuffixes()
{
    return {QStringLiteral("out"), QStringLiteral("orcout"), QStringLiteral("log")};
}

namespace {

bool isPicture(const CommandHelp::Option &option)
{
    return option.valueName == QLatin1String("picture");
}

/// "Refractive index (default 1.5). Of the medium.": the default ends the first sentence.
QString withDefault(const QCommandLineOption &option)
{
    static const QRegularExpression end(QStringLiteral("\\.( (?=[A-Z\"])|$)"));
    QString text = option.description();
    const int place = text.indexOf(end);
    return text.insert(place < 0 ? text.size() : place,
                       tr(" (default %1)").arg(option.defaultValues().first()));
}

/// A word as a POSIX shell reads it back.
QString quoted(const QString &word)
{
    static const QRegularExpression plain(QStringLiteral("^[\\w@%+=:,./-]+$"));
    if (plain.match(word).hasMatch())
        return word;
    return QLatin1Char('\'') + QString(word).replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

} // namespace

OptionReader::OptionReader(const char *command)
    : startFolder(QDir::currentPath())
{
    help.name = QLatin1String(command);
}

void OptionReader::setDescription(const QString &text)
{
    parser.setApplicationDescription(text);
    help.description = text;
}

void OptionReader::addArgument(const QString &name, const QString &description,
                               const QString &syntax, const QStringList &suffixes)
{
    parser.addPositionalArgument(name, description, syntax);
    help.arguments.append({name, syntax.isEmpty() ? name : syntax, description, suffixes});
}

void OptionReader::addOption(const QCommandLineOption &plain)
{
    QCommandLineOption option = plain;
    if (!option.defaultValues().isEmpty())
        option.setDescription(withDefault(option));
    parser.addOption(option);
    help.options.append({option.names().last(), option.valueName(), option.description(),
                         QStringList(), option.defaultValues().value(0)});
    if (isPicture(help.options.last()))
        help.options.last().suffixes = pictureSuffixes();
}

void OptionReader::addOptions(const QList<QCommandLineOption> &options)
{
    for (const QCommandLineOption &option : options)
        addOption(option);
}

void OptionReader::setSuffixes(const char *option, const QStringList &suffixes)
{
    for (CommandHelp::Option &described : help.options)
        if (described.name == QLatin1String(option))
            described.suffixes = suffixes;
}

void OptionReader::addResultOptions()
{
    addOptions({
        {QStringLiteral("json"),
         tr("Write the results as JSON to this file; - is standard output, in place of the text."),
         tr("file")},
        {QStringLiteral("csv"), tr("Write them as CSV, one table after another, likewise."),
         tr("file")},
    });
    setSuffixes("json", {QStringLiteral("json")});
    setSuffixes("csv", {QStringLiteral("csv")});
    hasResultOptions = true;
}

void OptionReader::addSheetOptions()
{
    if (std::none_of(help.options.cbegin(), help.options.cend(), isPicture))
        return;
    addOptions({
        {QStringLiteral("size"),
         tr("Size of every picture, mm, or cm with the unit behind it, e.g. 80x60 or 8x6cm; 120 mm "
            "wide without it, which can be printed 80 mm wide. Letters grow and shrink with it."),
         QStringLiteral("widthxheight")},
        {QStringLiteral("title"), tr("Title above every picture; an empty one leaves it out."),
         tr("text")},
    });
}

void OptionReader::checkSheetOptions() const
{
    QStringList pictures;
    for (const CommandHelp::Option &option : help.options)
        if (isPicture(option))
            pictures.append(QStringLiteral("--") + option.name);
    for (const QString &picture : qAsConst(pictures))
        if (parser.isSet(picture.mid(2)))
            return;
    for (const char *option : {"size", "title"})
        if (!pictures.isEmpty() && isSet(option))
            refuse(tr("--%1 belongs to a picture: %2 FILE")
                       .arg(QLatin1String(option), pictures.join(tr(" or "))));
}

void OptionReader::setHint(const QString &text)
{
    hint = text;
}

QString OptionReader::complaint() const
{
    QString text = parser.errorText();
    QStringList known;
    for (const CommandHelp::Option &option : help.options)
        known.append(option.name);
    for (const QString &unknown : parser.unknownOptionNames()) {
        const QString nearest = nearestWord(unknown, known);
        if (!nearest.isEmpty())
            text += tr(" Did you mean --%1?").arg(nearest);
    }
    return text;
}

void OptionReader::parse(const QStringList &arguments)
{
    addSheetOptions();
    const QCommandLineOption helpOption({QStringLiteral("h"), QStringLiteral("help")},
                                        tr("Show this help."));
    addOption(helpOption);
    if (arguments == QStringList(QLatin1String(describeArgument)))
        throw help;
    const QString program = QStringLiteral("lanqor ") + help.name;
    if (!parser.parse(QStringList(program) + arguments))
        throw UsageError{QStringLiteral("%1\nSee \"%2 --help\".").arg(complaint(), program)};
    if (!parser.isSet(helpOption)) {
        checkSheetOptions();
        if (hasResultOptions) {
            readResultFile("json");
            readResultFile("csv");
            LanqorReadFiles::setNoted(!resultFiles.isEmpty());
        }
        return;
    }
    // The usage line of the parser names the executable only.
    QString text = parser.helpText();
    const int end = text.indexOf(QLatin1Char('\n'));
    const int options = text.indexOf(QStringLiteral(" [options]"));
    if (options > 0 && options < end)
        text = QStringLiteral("Usage: ") + program + text.mid(options);
    // Names of one letter with two dashes, as in messages and examples.
    static const QRegularExpression shortName(QStringLiteral("^  -(\\w <[^>]*>)( +)  "),
                                              QRegularExpression::MultilineOption);
    text.replace(shortName, QStringLiteral("  --\\1\\2 "));
    throw HelpRequest{text};
}

QStringList OptionReader::files() const
{
    return parser.positionalArguments();
}

QStringList OptionReader::files(int count, const QString &complaint) const
{
    if (files().size() != count)
        refuse(complaint);
    return files();
}

bool OptionReader::isSet(const char *option) const
{
    return parser.isSet(QLatin1String(option));
}

QString OptionReader::text(const char *option) const
{
    return parser.value(QLatin1String(option));
}

QStringList OptionReader::texts(const char *option) const
{
    return parser.values(QLatin1String(option));
}

double OptionReader::number(const char *option, const std::function<bool(double)> &isAllowed,
                            const QString &needed) const
{
    bool isNumber = false;
    const double value = text(option).toDouble(&isNumber);
    if (!isNumber || !isAllowed(value))
        refuse(tr("--%1 needs %2").arg(QLatin1String(option), needed));
    return value;
}

int OptionReader::wholeNumber(const char *option, int minimum, int maximum,
                              const QString &needed) const
{
    bool isNumber = false;
    const int value = text(option).toInt(&isNumber);
    if (!isNumber || value < minimum || value > maximum)
        refuse(tr("--%1 needs %2").arg(QLatin1String(option), needed));
    return value;
}

int OptionReader::count(const char *option, int maximum) const
{
    return wholeNumber(option, 1, maximum, tr("a whole number from 1 to %1").arg(maximum));
}

int OptionReader::wholeNumber(const char *option) const
{
    bool isNumber = false;
    const int value = text(option).toInt(&isNumber);
    if (!isNumber)
        refuse(tr("--%1 %2 is not a whole number").arg(QLatin1String(option), text(option)));
    return value;
}

QStringList OptionReader::list(const char *option) const
{
    QStringList entries = text(option).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString &entry : entries)
        entry = entry.trimmed();
    return entries;
}

QVector<double> OptionReader::numbers(const char *option) const
{
    QVector<double> values;
    for (const QString &entry : text(option).split(QLatin1Char(','))) {
        bool isNumber = false;
        values.append(entry.trimmed().toDouble(&isNumber));
        if (!isNumber)
            return {};
    }
    return values;
}

QString OptionReader::outputFile(const char *option) const
{
    return text(option).isEmpty() ? QString() : QFileInfo(text(option)).absoluteFilePath();
}

QString OptionReader::command() const
{
    return help.name;
}

void OptionReader::setInForce(const char *option, const QString &value) const
{
    settled.insert(QLatin1String(option), value);
}

void OptionReader::setInForce(const char *option, double value) const
{
    setInForce(option, QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void OptionReader::keepText(const QString &option, const QString &text)
{
    keptTexts.insert(option, text);
}

QVector<OptionInForce> OptionReader::optionsInForce() const
{
    QVector<OptionInForce> all;
    for (const CommandHelp::Option &known : help.options) {
        if (known.name == QLatin1String("help") ||
            (hasResultOptions &&
             (known.name == QLatin1String("json") || known.name == QLatin1String("csv"))))
            continue;
        OptionInForce option;
        option.name = known.name;
        option.usual = known.usual;
        option.isFlag = known.valueName.isEmpty();
        option.isGiven = parser.isSet(known.name);
        option.values = parser.values(known.name);
        if (keptTexts.contains(known.name))
            option.values = QStringList(keptTexts.value(known.name));
        else if (!option.isGiven && settled.contains(known.name))
            option.values = QStringList(settled.value(known.name));
        all.append(option);
    }
    return all;
}

QString OptionReader::shortName(const QString &fileName) const
{
    for (const QString &folder : {startFolder, QDir::currentPath()})
        if (fileName.startsWith(folder + QLatin1Char('/')))
            return fileName.mid(folder.size() + 1);
    return fileName;
}

QString OptionReader::commandLine() const
{
    QStringList words = QStringList(QStringLiteral("lanqor")) + help.name.split(QLatin1Char(' '));
    for (const OptionInForce &option : optionsInForce()) {
        const QString name = QStringLiteral("--") + option.name;
        if (option.isGiven && option.isFlag)
            words.append(name);
        else if (option.isGiven)
            for (const QString &value : option.values)
                words << name << value;
    }
    const QStringList arguments = files();
    for (const QString &argument : arguments)
        if (argument.startsWith(QLatin1Char('-')) && !words.contains(QStringLiteral("--")))
            words.append(QStringLiteral("--"));
    words += arguments;
    for (QString &word : words)
        word = quoted(word);
    return words.join(QLatin1Char(' '));
}

QString OptionReader::resultFile(const char *option) const
{
    return resultFiles.value(QLatin1String(option));
}

/// A command may change the folder before it writes. A file of results must be none that the
/// command line names besides.
void OptionReader::readResultFile(const char *option)
{
    if (!isSet(option))
        return;
    const auto pathOf = [](const QString &file) {
        return file == QLatin1String("-") ? file : QFileInfo(file).absoluteFilePath();
    };
    const QString file = text(option);
    if (file.isEmpty())
        refuse(tr("--%1 needs a file, or - for standard output").arg(QLatin1String(option)));
    QStringList others = parser.positionalArguments();
    for (const QString &other : parser.optionNames())
        if (other != QLatin1String(option))
            others += parser.values(other);
    for (const QString &other : qAsConst(others)) {
        const bool isSameFile = QFileInfo::exists(file) && QFileInfo(other) == QFileInfo(file);
        if (pathOf(other) == pathOf(file) || isSameFile)
            refuse(tr("--%1 %2: the command line names this place a second time")
                       .arg(QLatin1String(option), file));
    }
    resultFiles.insert(QLatin1String(option), pathOf(file));
}

void OptionReader::keepFromResults(const QStringList &files) const
{
    for (auto result = resultFiles.begin(); result != resultFiles.end(); ++result)
        for (const QString &file : files)
            if (QFileInfo(file).absoluteFilePath() == *result)
                refuse(tr("--%1: %2 is a file of this command").arg(result.key(), file));
}

void OptionReader::refuse(const QString &message) const
{
    throw UsageError{message + hint};
}

} // namespace cli
