// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgrammingFile.h"

#include "ProgrammingTables.h"
#include "XmlViewTables.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"
#include "settings/XmlSettings.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <pugixml.hpp>

namespace {

QString key(const char *word, int n)
{
    return QLatin1String(word) + QString::number(n);
}

// The number that names a row's attributes: column 0 when it is a number
// that can stand in an attribute name.
std::optional<int> rowNumber(const ProgrammingGrid &g, int row, int col = 0)
{
    const std::optional<int16_t> n = CellInteger(g.text(row, col));
    if (!n || *n < 0)
        return std::nullopt;
    return *n;
}

// A decimal number as the user's locale writes it. The program writes no
// thousands separators, so in a file written under another locale the other
// sign ("22.5" here, "22,5" there) can only be the decimal sign.
QString localDecimal(const QString &text)
{
    const QString point = Conv::locale().decimalPoint();
    const QChar decimal = point.isEmpty() ? QLatin1Char('.') : point.front();
    const QChar other = decimal == QLatin1Char(',') ? QLatin1Char('.') : QLatin1Char(',');
    if (text.contains(decimal) || text.count(other) != 1)
        return text;
    QString local = text;
    local.replace(other, decimal);
    return Conv::IsNumeric(local) ? local : text;
}

QString rootName(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QByteArray content = file.readAll();
    pugi::xml_document doc;
    if (!doc.load_buffer(content.constData(), size_t(content.size())))
        return QString();
    return QString::fromUtf8(doc.document_element().name());
}

QString nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

ProgrammingFile::ProgrammingFile(const QString &name, const QString &folder)
    : m_name(name), m_folder(folder)
{
}

QString ProgrammingFile::path() const
{
    XmlSettings settings;
    settings.OpenSettings(m_name, m_folder, QString());
    return settings.filePath();
}

void ProgrammingFile::note(const QString &problem)
{
    if (m_problem.isEmpty())
        m_problem = problem;
}

bool ProgrammingFile::open(XmlSettings &settings, Use use)
{
    settings.OpenSettings(m_name, m_folder, QString());
    // A save goes where the technician chose, over whatever stands there;
    // only the loading looks at what the file is.
    if (use == Use::Load && !m_checked) {
        m_checked = true;
        const QString path = settings.filePath();
        if (QFile::exists(path)) {
            if (!settings.Loaded) {
                m_leaveAlone = true;
                note(QStringLiteral("Il file %1 non è un file XML leggibile: nessun dato caricato, il file non è "
                                    "stato modificato.")
                         .arg(nativePath(path)));
            } else if (rootName(path) != QLatin1String("settings")) {
                m_leaveAlone = true;
                note(QStringLiteral("Il file %1 non è un file di programmazione: il file non è stato modificato.")
                         .arg(nativePath(path)));
            }
        }
    }
    return !m_saveFailed;
}

void ProgrammingFile::close(XmlSettings &settings)
{
    // Loading rewrites the file in the layout that XmlSettings gives it.
    // A file that is not ours is only read, and one that cannot be written
    // is shown all the same.
    if (m_leaveAlone)
        return;
    try {
        settings.CloseSettings(QString());
    } catch (const RunTimeError &error) {
        m_leaveAlone = true;
        note(QStringLiteral("Il file non può essere aggiornato: %1").arg(error.description()));
    }
}

void ProgrammingFile::update(XmlSettings &settings)
{
    try {
        settings.Update();
    } catch (const RunTimeError &error) {
        m_saveFailed = true;
        note(QStringLiteral("Scrittura file non riuscita: %1").arg(error.description()));
    }
}

// ---------------------------------------------------------------- loading

void ProgrammingFile::LoadIvaFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridIva;
    g.clearRows();
    QString value;
    for (int n = 1; n <= 4; ++n) {
        if (s.GetValueAtt(QStringLiteral("InstallIva"), key("Iva", n), value))
            g.setRow(g.addRow(), {QString::number(n), localDecimal(value)});
    }
    close(s);
}

void ProgrammingFile::LoadRepFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridRep;
    g.clearRows();
    const QString section = QStringLiteral("InstallRep");
    QString value;
    for (int n = 1; n <= 999; ++n) {
        if (!s.GetValueAtt(section, key("Desc", n), value))
            continue;
        const int row = g.addRow();
        g.setText(row, 0, QString::number(n));
        g.setText(row, 1, value);
        if (s.GetValueAtt(section, key("Lim", n), value))
            g.setText(row, 2, localDecimal(value));
        if (s.GetValueAtt(section, key("Iva", n), value))
            g.setText(row, 3, value);
        if (s.GetValueAtt(section, key("ScRias", n), value))
            g.setText(row, 4, value);
        if (s.GetValueAtt(section, key("GrpMerc", n), value))
            g.setText(row, 5, value);
    }
    close(s);
}

void ProgrammingFile::LoadCarteFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridCarteCredito;
    g.clearRows();
    QString value;
    for (int n = 1; n <= 10; ++n) {
        if (s.GetValueAtt(QStringLiteral("InstallCarteCredito"), key("Desc", n), value))
            g.setRow(g.addRow(), {QString::number(n), value});
    }
    close(s);
}

void ProgrammingFile::LoadTicketFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridTicket;
    g.clearRows();
    const QString section = QStringLiteral("InstallTicket");
    QString value;
    for (int n = 1; n <= 10; ++n) {
        if (!s.GetValueAtt(section, key("Desc", n), value))
            continue;
        QString amount = QStringLiteral("0");
        if (s.GetValueAtt(section, key("Imp", n), amount))
            amount = localDecimal(amount);
        g.setRow(g.addRow(), {QString::number(n), value, amount});
    }
    close(s);
}

void ProgrammingFile::LoadFlagFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridFlag;
    t.flagRow = 1;
    g.clearRows();
    QString value;
    for (int section : {14, 15}) {
        const QString element = key("InstallFlagS", section);
        for (int n = 1; n <= 99; ++n) {
            if (!s.GetValueAtt(element, key("f", n), value))
                continue;
            g.addRow();
            g.setRow(t.flagRow, {QString::number(section), QString::number(n), value});
            ++t.flagRow;
        }
    }
    close(s);
}

void ProgrammingFile::LoadIntFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridRigaInt;
    const QString section = QStringLiteral("InstallInt");
    QString value;
    for (int n = 1; n <= 6; ++n) {
        g.setText(n, 0, QString::number(n));
        if (!s.GetValueAtt(section, key("R", n), value))
            break; // the header ends at the first missing line
        g.setText(n, 1, value);
        if (!s.GetValueAtt(section, key("TipoR", n), value))
            continue;
        g.setText(n, 3, value);
        const std::optional<int16_t> style = CellInteger(value);
        g.setText(n, 2, style ? HeaderStyleWord(*style, CentreMark(g.text(n, 1))).value_or(QString()) : QString());
    }
    // Read only: dropped without closing, so not saved.
}

void ProgrammingFile::LoadLogoFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    QString value;
    // A value that is no 16-bit number counts as no logo.
    t.logoTesta = s.GetValueAtt(QStringLiteral("InstallLogo"), QStringLiteral("Testa"), value)
                      ? CellInteger(value).value_or(0) : int16_t(0);
    t.logoCoda = s.GetValueAtt(QStringLiteral("InstallLogo"), QStringLiteral("Coda"), value)
                     ? CellInteger(value).value_or(0) : int16_t(0);
}

void ProgrammingFile::LoadPS2FromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridPS2;
    g.clearRows();
    QString value;
    for (int n = 0; n <= 255; ++n) {
        if (s.GetValueAtt(QStringLiteral("InstallPS2"), key("N", n), value))
            g.setRow(g.addRow(), {QString::number(n), value});
    }
    close(s);
}

void ProgrammingFile::LoadPromoFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridPromoTable;
    g.clearRows();
    const QString section = QStringLiteral("InstallPromoTable");
    for (int n = 1; n <= 100; ++n) {
        QString value;
        if (!s.GetValueAtt(section, key("N", n), value))
            continue;
        const int row = g.addRow();
        g.setText(row, 0, QString::number(n));
        // Each cell takes the text last read: a missing attribute repeats
        // the one before it (a missing Desc shows the row's number).
        s.GetValueAtt(section, key("Desc", n), value);
        g.setText(row, 1, value);
        s.GetValueAtt(section, key("Tipo", n), value);
        g.setText(row, 2, value);
        s.GetValueAtt(section, key("Barcode", n), value);
        g.setText(row, 3, value);
        s.GetValueAtt(section, key("Richiamo", n), value);
        g.setText(row, 4, value);
        s.GetValueAtt(section, key("Valore", n), value);
        g.setText(row, 5, localDecimal(value));
    }
    close(s);
}

void ProgrammingFile::LoadContantiFromFile(XmlViewTables &t)
{
    XmlSettings s;
    open(s, Use::Load);
    ProgrammingGrid &g = t.gridContantiDesc;
    g.clearRows();
    const QString section = QStringLiteral("InstallContantiDesc");
    QString value;
    for (int n = 1; n <= 5; ++n) {
        if (!s.GetValueAtt(section, key("N", n), value))
            continue;
        QString description, amount;
        s.GetValueAtt(section, key("Desc", n), description);
        if (s.GetValueAtt(section, key("ImportoPredefinito", n), amount))
            amount = localDecimal(amount);
        g.setRow(g.addRow(), {QString::number(n), description, amount});
    }
    close(s);
}

// ----------------------------------------------------------------- saving

void ProgrammingFile::beginSave()
{
    m_before.reset();
    m_beforeKept = false;
    QFile file(path());
    if (file.exists()) {
        if (!file.open(QIODevice::ReadOnly))
            return; // it could not be read, so it will not be written either
        m_before = file.readAll();
    }
    m_beforeKept = true;
}

bool ProgrammingFile::rollBack()
{
    if (!m_beforeKept)
        return false;
    const QString target = path();
    if (!m_before)
        return !QFile::exists(target) || QFile::remove(target);
    QSaveFile file(target);
    return file.open(QIODevice::WriteOnly) && file.write(*m_before) == m_before->size() && file.commit();
}

void ProgrammingFile::SaveVersionToFile()
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const QString version = ReadFirmwareInfo();
    const QString root = QStringLiteral("settings");
    s.SetValueAtt(root, QStringLiteral("CPUVersion"), version);
    s.SetValueAtt(root, QStringLiteral("FW_Major_Version"), int(gFwMajor));
    s.SetValueAtt(root, QStringLiteral("FW_Minor_Version"), int(gFwMinor));
    update(s);
}

void ProgrammingFile::SaveIvaToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridIva;
    for (int row = 1; row < g.rows(); ++row) {
        if (const auto n = rowNumber(g, row))
            s.SetValueAtt(QStringLiteral("InstallIva"), key("Iva", *n), g.text(row, 1));
    }
    update(s);
}

void ProgrammingFile::SaveRepToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridRep;
    const QString section = QStringLiteral("InstallRep");
    for (int row = 1; row < g.rows(); ++row) {
        const auto n = rowNumber(g, row);
        if (!n)
            continue;
        s.SetValueAtt(section, key("Desc", *n), g.text(row, 1));
        s.SetValueAtt(section, key("Lim", *n), g.text(row, 2));
        s.SetValueAtt(section, key("Iva", *n), g.text(row, 3));
        s.SetValueAtt(section, key("ScRias", *n), g.text(row, 4));
        s.SetValueAtt(section, key("GrpMerc", *n), g.text(row, 5));
    }
    update(s);
}

void ProgrammingFile::SaveCarteToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridCarteCredito;
    for (int row = 1; row < g.rows(); ++row) {
        if (const auto n = rowNumber(g, row))
            s.SetValueAtt(QStringLiteral("InstallCarteCredito"), key("Desc", *n), g.text(row, 1));
    }
    update(s);
}

void ProgrammingFile::SaveTicketToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridTicket;
    const QString section = QStringLiteral("InstallTicket");
    for (int row = 1; row < g.rows(); ++row) {
        const auto n = rowNumber(g, row);
        if (!n)
            continue;
        s.SetValueAtt(section, key("Desc", *n), g.text(row, 1));
        s.SetValueAtt(section, key("Imp", *n), g.text(row, 2));
    }
    update(s);
}

void ProgrammingFile::SaveFlagToFile(const XmlViewTables &t)
{
    // One round of the whole file per flag: each step stands on its own.
    const ProgrammingGrid &g = t.gridFlag;
    for (int row = 1; row < g.rows() && !m_saveFailed; ++row) {
        const auto section = rowNumber(g, row, 0);
        const auto n = rowNumber(g, row, 1);
        if (!section || !n)
            continue;
        XmlSettings s;
        if (!open(s, Use::Save))
            return;
        s.SetValueAtt(key("InstallFlagS", *section), key("f", *n), g.text(row, 2));
        update(s);
    }
}

void ProgrammingFile::SaveLogoToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    s.SetValueAtt(QStringLiteral("InstallLogo"), QStringLiteral("Testa"), int(t.logoTesta));
    s.SetValueAtt(QStringLiteral("InstallLogo"), QStringLiteral("Coda"), int(t.logoCoda));
    update(s);
}

void ProgrammingFile::SaveIntToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridRigaInt;
    const QString section = QStringLiteral("InstallInt");
    for (int n = 1; n <= 6; ++n) {
        if (g.isBlank(n, 1))
            break;
        s.SetValueAtt(section, key("R", n), g.text(n, 1));
        // A centred normal line (4) is saved as normal: the loading finds
        // the centring again in its blanks. A style that could not be read
        // (a blank cell) is saved as it stands, so the line is kept and its
        // style stays unknown, as on the screen.
        const std::optional<int16_t> style = CellInteger(g.text(n, 3));
        if (style)
            s.SetValueAtt(section, key("TipoR", n), int(*style == 4 ? 0 : *style));
        else
            s.SetValueAtt(section, key("TipoR", n), g.text(n, 3));
    }
    try {
        s.CloseSettings(QString());
    } catch (const RunTimeError &error) {
        m_saveFailed = true;
        note(QStringLiteral("Scrittura file non riuscita: %1").arg(error.description()));
    }
}

void ProgrammingFile::SavePS2ToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridPS2;
    for (int row = 1; row < g.rows(); ++row) {
        const auto n = rowNumber(g, row);
        const auto function = CellInteger(g.text(row, 1));
        if (n && function)
            s.SetValueAtt(QStringLiteral("InstallPS2"), key("N", *n), int(*function));
    }
    update(s);
}

void ProgrammingFile::SavePromoToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridPromoTable;
    const QString section = QStringLiteral("InstallPromoTable");
    // The promotion is named by its place in the grid, not by column 0.
    for (int n = 1; n < g.rows(); ++n) {
        if (!g.isNumeric(n, 2) || !g.isNumeric(n, 4) || !g.isNumeric(n, 5))
            continue;
        // Type and recall travel as 16-bit numbers, the value as money; a
        // cell that does not fit is written as it stands rather than lost.
        const auto tipo = CellInteger(g.text(n, 2));
        const auto richiamo = CellInteger(g.text(n, 4));
        const auto valore = CellMoney(g.text(n, 5));
        s.SetValueAtt(section, key("N", n), n);
        s.SetValueAtt(section, key("Desc", n), g.text(n, 1));
        s.SetValueAtt(section, key("Tipo", n), tipo ? Conv::Text(int(*tipo)) : g.text(n, 2));
        s.SetValueAtt(section, key("Barcode", n), g.text(n, 3));
        s.SetValueAtt(section, key("Richiamo", n), richiamo ? Conv::Text(int(*richiamo)) : g.text(n, 4));
        s.SetValueAtt(section, key("Valore", n), valore ? Conv::Text(*valore) : g.text(n, 5));
    }
    update(s);
}

void ProgrammingFile::SaveContantiToFile(const XmlViewTables &t)
{
    XmlSettings s;
    if (!open(s, Use::Save))
        return;
    const ProgrammingGrid &g = t.gridContantiDesc;
    const QString section = QStringLiteral("InstallContantiDesc");
    for (int row = 1; row < g.rows(); ++row) {
        const auto n = rowNumber(g, row);
        if (!n || !g.isNumeric(row, 2))
            continue;
        s.SetValueAtt(section, key("N", *n), *n);
        s.SetValueAtt(section, key("Desc", *n), g.text(row, 1));
        s.SetValueAtt(section, key("ImportoPredefinito", *n), g.text(row, 2));
    }
    update(s);
}
