#include "input/crystal_p.h"

#include "LanqorInputData.h"
#include "core/elements_p.h"
#include "input/lineReader_p.h"
#include "input/readerLimits_p.h"

#include <gemmi/cif.hpp>
#include <gemmi/numb.hpp>
#include <gemmi/pdb.hpp>
#include <gemmi/symmetry.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace crystals {

namespace {

/// Of the text that is parsed, bytes: its words take several times as much memory.
constexpr std::size_t largestText = 16U << 20U;

QString tooLong(const QString &fileName)
{
    return LanqorInputData::tr("\nThe structure file holds more than %1 MB; take out what is not "
                               "the structure (lists of reflections): \n%2")
        .arg(QString::number(largestText >> 20U), fileName);
}

/// The file without the contents of its text fields, which open and end with a semicolon at the
/// beginning of a line; an error when it cannot be read.
QString readCifText(const InputFile &file, std::string &text)
{
    LineReader reader(file);
    if (!reader.open())
        return missingFile(file.fileName());
    bool isInField = false;
    while (reader.next()) {
        const std::string_view line = reader.line();
        if (!line.empty() && line.front() == ';') {
            if (isInField)
                text.append(line);
            else
                text += ';';
            text += '\n';
            isInField = !isInField;
        } else if (!isInField) {
            text.append(line);
            text += '\n';
        }
        if (text.size() > largestText)
            return tooLong(file.fileName());
    }
    return QString();
}

QString readPdbText(const InputFile &file, std::string &text)
{
    LineReader reader(file);
    if (!reader.open())
        return missingFile(file.fileName());
    while (reader.next()) {
        text.append(reader.line());
        text += '\n';
        if (text.size() > largestText)
            return tooLong(file.fileName());
    }
    return QString();
}

QString unparsed(const InputFile &file, const std::exception &error)
{
    return LanqorInputData::tr("\nThe structure file cannot be read (%1): \n%2")
        .arg(QString::fromUtf8(error.what()), file.fileName());
}

/// "Eu3+" and "EU1" give "Eu"; a name whose two letters are no element ("OW1") gives that of its
/// first. Empty when there is none.
QString elementOf(const std::string &text)
{
    QString letters;
    for (const QChar letter : QString::fromStdString(text)) {
        if (!letter.isLetter())
            break;
        letters += letter;
    }
    for (int count : {2, 1}) {
        const QString element = elementLabel(letters.left(count));
        if (letters.size() >= count &&
            (atomicNumberOf(element) > 0 || element == QLatin1String("D") ||
             element == QLatin1String("Hg")))
            return element;
    }
    return QString();
}

/// "1", "-1" of an assembly, or its first letter.
int groupOf(const std::string &text)
{
    bool isNumber = false;
    const int number = QString::fromStdString(text).toInt(&isNumber);
    return isNumber || text.empty() ? number : static_cast<unsigned char>(text.front());
}

bool isOccupancy(double occupancy)
{
    return occupancy >= 0.0 && occupancy <= 1.001; // refined values are rounded
}

Operation operationOf(const gemmi::Op &op)
{
    Operation result;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j)
            result.rotation(i, j) = op.rot[i][j] / static_cast<double>(gemmi::Op::DEN);
        result.shift[i] = op.tran[i] / static_cast<double>(gemmi::Op::DEN);
    }
    return result;
}

QVector<Operation> operationsOf(const gemmi::GroupOps &group)
{
    QVector<Operation> operations;
    for (const gemmi::Op &op : group.all_ops_sorted())
        operations.append(operationOf(op));
    std::stable_partition(operations.begin(), operations.end(), [](const Operation &operation) {
        return operation.rotation.isIdentity() && operation.shift.isZero();
    });
    return operations;
}

/// The operations of a block: as listed, else those of its space group by Hall's symbol or by that
/// of Hermann and Mauguin.
QVector<Operation> operationsOf(gemmi::cif::Block &block, const gemmi::UnitCell &cell,
                                QStringList &warnings)
{
    QVector<Operation> ofGroup;
    for (const char *tag : {"_space_group_name_Hall", "_symmetry_space_group_name_Hall"}) {
        const std::string *hall = block.find_value(tag);
        if (ofGroup.isEmpty() && hall && !gemmi::cif::is_null(*hall))
            ofGroup = operationsOf(gemmi::symops_from_hall(gemmi::cif::as_string(*hall).c_str()));
    }
    for (const char *tag : {"_space_group_name_H-M_alt", "_symmetry_space_group_name_H-M"}) {
        const std::string *name = block.find_value(tag);
        const gemmi::SpaceGroup *spaceGroup =
            name && ofGroup.isEmpty() ? gemmi::find_spacegroup_by_name(gemmi::cif::as_string(*name),
                                                                       cell.alpha, cell.gamma)
                                      : nullptr;
        if (spaceGroup)
            ofGroup = operationsOf(spaceGroup->operations());
    }
    for (const char *tag : {"_space_group_symop_operation_xyz", "_symmetry_equiv_pos_as_xyz"}) {
        gemmi::GroupOps listed;
        for (const std::string &triplet : block.find_values(tag))
            listed.sym_ops.push_back(gemmi::parse_triplet(gemmi::cif::as_string(triplet)).wrap());
        if (listed.sym_ops.empty())
            continue;
        listed.cen_ops.push_back({0, 0, 0});
        const QVector<Operation> operations = operationsOf(listed);
        if (!ofGroup.isEmpty() && ofGroup.size() != operations.size())
            warnings.append(
                LanqorInputData::tr("%1 symmetry operations are listed, the space "
                                    "group named has %2; the listed ones are used")
                    .arg(QString::number(operations.size()), QString::number(ofGroup.size())));
        return operations;
    }
    return ofGroup;
}

Eigen::Matrix3d matrixOf(const gemmi::Mat33 &matrix)
{
    Eigen::Matrix3d result;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            result(i, j) = matrix[i][j];
    return result;
}

/// True for a cell of possible edges and heights, Angstrom.
bool isCell(const gemmi::UnitCell &cell)
{
    constexpr double shortest = 2.0;
    constexpr double longest = 1000.0;
    const auto isEdge = [](double edge, double reciprocal) {
        return edge <= longest && reciprocal > 0.0 && 1.0 / reciprocal >= shortest;
    };
    return isEdge(cell.a, cell.ar) && isEdge(cell.b, cell.br) && isEdge(cell.c, cell.cr) &&
           std::isfinite(cell.volume);
}

/// Takes the atoms of a block; an error when one cannot be.
QString takeSites(gemmi::cif::Block &block, Crystal &crystal)
{
    using gemmi::cif::as_number;
    using gemmi::cif::as_string;
    enum { Label, X, Y, Z, Symbol, Occupancy, Assembly, Group };
    gemmi::cif::Table atoms =
        block.find("_atom_site_", {"label", "fract_x", "fract_y", "fract_z", "?type_symbol",
                                   "?occupancy", "?disorder_assembly", "?disorder_group"});
    if (!atoms.ok())
        return LanqorInputData::tr("the atoms lack a label or a coordinate");
    QStringList placeless;
    for (const auto atom : atoms) {
        Site site;
        site.name = QString::fromStdString(as_string(atom[Label]));
        site.element = elementOf(as_string(atom[atom.has2(Symbol) ? Symbol : Label]));
        site.place = {as_number(atom[X]), as_number(atom[Y]), as_number(atom[Z])};
        if (atom.has2(Occupancy))
            site.occupancy = as_number(atom[Occupancy]);
        if (atom.has2(Assembly))
            site.assembly = QString::fromStdString(as_string(atom[Assembly]));
        if (atom.has2(Group))
            site.group = groupOf(as_string(atom[Group]));
        constexpr double farthest = 100.0; // cells
        if (!site.place.allFinite())
            placeless.append(site.name);
        else if (site.element.isEmpty() || site.place.cwiseAbs().maxCoeff() > farthest ||
                 !isOccupancy(site.occupancy))
            return LanqorInputData::tr("the atom \"%1\" is of no element, lies outside any cell "
                                       "or has an occupancy that is not from 0 to 1")
                .arg(site.name);
        else if (site.occupancy > 0.0)
            crystal.sites.append(site);
    }
    if (!placeless.isEmpty())
        crystal.warnings.append(LanqorInputData::tr("atoms without coordinates are left out: %1")
                                    .arg(listOf(placeless)));
    return QString();
}

/// The crystal of a data block; an error when it cannot be taken.
QString takeBlock(gemmi::cif::Block &block, Crystal &crystal)
{
    crystal.name = QString::fromStdString(block.name);
    gemmi::cif::Table edges = block.find(
        "_cell_", {"length_a", "length_b", "length_c", "angle_alpha", "angle_beta", "angle_gamma"});
    gemmi::UnitCell cell;
    if (edges.ok()) {
        const auto row = edges.one();
        using gemmi::cif::as_number;
        cell.set(as_number(row[0]), as_number(row[1]), as_number(row[2]), as_number(row[3]),
                 as_number(row[4]), as_number(row[5]));
    }
    if (!isCell(cell))
        return LanqorInputData::tr("the cell (_cell_length_a ... _cell_angle_gamma) is missing or "
                                   "impossible");
    crystal.toCartesian = matrixOf(cell.orth.mat);
    crystal.operations = operationsOf(block, cell, crystal.warnings);
    if (crystal.operations.isEmpty())
        return LanqorInputData::tr(
            "neither symmetry operations nor a known space group are told; write "
            "\"_symmetry_space_group_name_H-M 'P 1'\" into the file when there is no symmetry");
    return takeSites(block, crystal);
}

Site siteOf(const gemmi::Residue &residue, const gemmi::Atom &atom)
{
    Site site;
    site.name = QString::fromStdString(residue.seqid.str() + " " + atom.name);
    site.element = elementOf(atom.element.name());
    site.place = {atom.pos.x, atom.pos.y, atom.pos.z};
    site.occupancy = atom.occ;
    if (atom.altloc != '\0') {
        site.assembly = QString::fromStdString(residue.seqid.str());
        site.group = atom.altloc;
    }
    return site;
}

} // namespace

Crystals readCif(const InputFile &file)
{
    Crystals crystals;
    std::string text;
    crystals.error = readCifText(file, text);
    if (!crystals.error.isEmpty())
        return crystals;
    try {
        gemmi::cif::Document document;
        tao::pegtl::memory_input<> input(text.data(), text.size(), "CIF");
        gemmi::cif::parse_input(document, input);
        for (gemmi::cif::Block &block : document.blocks) {
            if (!block.find_values("_atom_site_fract_x"))
                continue;
            Crystal crystal;
            const QString fault = takeBlock(block, crystal);
            if (!fault.isEmpty()) {
                crystals.error = LanqorInputData::tr("\nThe structure \"%1\" of the CIF: %2: \n%3")
                                     .arg(crystal.name, fault, file.fileName());
                return crystals;
            }
            crystals.found.append(crystal);
        }
    } catch (const std::exception &error) {
        crystals.error = unparsed(file, error);
        return crystals;
    }
    if (crystals.found.isEmpty())
        crystals.error = LanqorInputData::tr("\nThe CIF holds no atoms with fractional "
                                             "coordinates (_atom_site_fract_x): \n") +
                         file.fileName();
    return crystals;
}

Crystals readPdb(const InputFile &file)
{
    Crystals crystals;
    std::string text;
    crystals.error = readPdbText(file, text);
    if (!crystals.error.isEmpty())
        return crystals;
    try {
        const gemmi::Structure structure = gemmi::read_pdb_string(text, "PDB");
        const gemmi::SpaceGroup *spaceGroup = gemmi::find_spacegroup_by_name(
            structure.spacegroup_hm, structure.cell.alpha, structure.cell.gamma);
        Crystal crystal;
        crystal.isPeriodic = structure.cell.is_crystal() && isCell(structure.cell) && spaceGroup;
        Eigen::Matrix3d toFractional = Eigen::Matrix3d::Identity();
        if (crystal.isPeriodic) {
            crystal.toCartesian = matrixOf(structure.cell.orth.mat);
            toFractional = matrixOf(structure.cell.frac.mat);
            crystal.operations = operationsOf(spaceGroup->operations());
        } else {
            crystal.operations.append({Eigen::Matrix3d::Identity(), Eigen::Vector3d::Zero()});
        }
        for (std::size_t i = 0; i < std::min<std::size_t>(structure.models.size(), 1); ++i)
            for (const gemmi::Chain &chain : structure.models[i].chains)
                for (const gemmi::Residue &residue : chain.residues)
                    for (const gemmi::Atom &atom : residue.atoms) {
                        Site site = siteOf(residue, atom);
                        if (site.element.isEmpty() || !site.place.allFinite() ||
                            !isOccupancy(site.occupancy)) {
                            crystals.error =
                                LanqorInputData::tr("\nAtom %1 of the PDB file is of no element, "
                                                    "has no coordinates or an occupancy that is "
                                                    "not from 0 to 1: \n%2")
                                    .arg(site.name, file.fileName());
                            return crystals;
                        }
                        site.place = toFractional * site.place;
                        crystal.sites.append(site);
                    }
        if (crystal.sites.isEmpty())
            crystals.error =
                LanqorInputData::tr("\nThe PDB file holds no atoms (ATOM, HETATM): \n") +
                file.fileName();
        else
            crystals.found.append(crystal);
    } catch (const std::exception &error) {
        crystals.error = unparsed(file, error);
    }
    return crystals;
}

} // namespace crystals
