#include "convert/program/InfoText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::size_t columns = 7;
constexpr std::size_t textColumns = 2; // the leading columns, left-aligned
using Row = std::array<QString, columns>;

Row rowOf(const InfoEntry& entry)
{
    const MoleculeInfo& info = entry.info;
    return {info.name.isEmpty() ? entry.file : info.name,
            info.formula,
            QString::number(info.weight, 'f', 3),
            QString::number(info.atoms),
            QString::number(info.bonds),
            QString::number(info.rings),
            QString::number(info.warnings.size())};
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

QJsonObject objectOf(const InfoEntry& entry)
{
    const MoleculeInfo& info = entry.info;
    return {{"file", entry.file},
            {"name", info.name},
            {"formula", info.formula},
            {"weight", std::round(info.weight * 1000) / 1000},
            {"charge", info.charge},
            {"atoms", info.atoms},
            {"bonds", info.bonds},
            {"rings", info.rings},
            {"inchi", info.inchi},
            {"inchikey", info.inchiKey},
            {"labels", QJsonArray::fromStringList(info.labels)},
            {"warnings", QJsonArray::fromStringList(info.warnings)}};
}

} // namespace

QByteArray infoTable(const std::vector<InfoEntry>& entries)
{
    std::vector<Row> rows = {{"Molecule", "Formula", "Weight", "Atoms", "Bonds", "Rings", "Warnings"}};
    for (const InfoEntry& entry : entries)
        rows.push_back(rowOf(entry));
    std::array<qsizetype, columns> widths = {};
    for (const Row& row : rows)
        for (std::size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], row[i].size());

    QString table = lineOf(rows.front(), widths);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        table += lineOf(rows[i + 1], widths);
        for (const QString& identifier : {entries[i].info.inchi, entries[i].info.inchiKey})
            if (!identifier.isEmpty())
                table += QStringLiteral("  ") + identifier + u'\n';
        for (const QString& warning : entries[i].info.warnings)
            table += QStringLiteral("  ! ") + warning + u'\n';
    }
    return table.toUtf8();
}

QByteArray infoJson(const std::vector<InfoEntry>& entries)
{
    QJsonArray array;
    for (const InfoEntry& entry : entries)
        array.append(objectOf(entry));
    return QJsonDocument(array).toJson();
}
