#include "convert/InfoText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::size_t columns = 7;
constexpr std::size_t textColumns = 2; // the first ones, flush left
using Row = std::array<QString, columns>;

Row rowOf(const ToldMolecule& told)
{
    const MoleculeInfo& info = told.info;
    return {info.name.isEmpty() ? told.file : info.name,
            info.formula,
            QString::number(info.weight, 'f', 3),
            QString::number(info.atoms),
            QString::number(info.bonds),
            QString::number(info.rings),
            QString::number(info.complaints.size())};
}

QString lineOf(const Row& row, const std::array<qsizetype, columns>& widths)
{
    QString line;
    for (std::size_t i = 0; i < columns; ++i) {
        if (i > 0)
            line += QStringLiteral("  ");
        line += i < textColumns ? row[i].leftJustified(widths[i]) : row[i].rightJustified(widths[i]);
    }
    return line + u'\n';
}

QJsonObject objectOf(const ToldMolecule& told)
{
    const MoleculeInfo& info = told.info;
    return {{"file", told.file},
            {"name", info.name},
            {"formula", info.formula},
            {"weight", std::round(info.weight * 1000) / 1000},
            {"charge", info.charge},
            {"atoms", info.atoms},
            {"bonds", info.bonds},
            {"rings", info.rings},
            {"labels", QJsonArray::fromStringList(info.labels)},
            {"complaints", QJsonArray::fromStringList(info.complaints)}};
}

} // namespace

QByteArray infoTable(const std::vector<ToldMolecule>& molecules)
{
    std::vector<Row> rows = {{"Molecule", "Formula", "Weight", "Atoms", "Bonds", "Rings", "Complaints"}};
    for (const ToldMolecule& told : molecules)
        rows.push_back(rowOf(told));
    std::array<qsizetype, columns> widths = {};
    for (const Row& row : rows)
        for (std::size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], row[i].size());

    QString table = lineOf(rows.front(), widths);
    for (std::size_t i = 0; i < molecules.size(); ++i) {
        table += lineOf(rows[i + 1], widths);
        for (const QString& complaint : molecules[i].info.complaints)
            table += QStringLiteral("  ! ") + complaint + u'\n';
    }
    return table.toUtf8();
}

QByteArray infoJson(const std::vector<ToldMolecule>& molecules)
{
    QJsonArray array;
    for (const ToldMolecule& told : molecules)
        array.append(objectOf(told));
    return QJsonDocument(array).toJson();
}
