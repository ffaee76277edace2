// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

struct XmlViewTables;
class XmlSettings;

// The programming file: every table of XmlViewTables as attributes of one
// element per table, below the root "settings". Each loader and saver opens
// the file through its own XmlSettings; a loader closes it again, which
// saves it, and a saver saves it with Update, so that every step stands on
// its own. The flags are saved one row at a time, each row a load and save
// of the whole file.
//
// Numbers are texts in the user's locale, as the grids hold them. A file
// written under another locale is read all the same: the program never
// writes thousands separators, so the other decimal sign in a number of a
// decimal column can only be a decimal sign, and is read as one.
//
// What the file code will not do: rewrite a file that exists but is not well
// formed, or whose root is not "settings" (the loaders then only read it);
// end the run when the file cannot be written. Such a problem is kept and
// told once by problem(); a save that fails stops the saving.
class ProgrammingFile
{
public:
    ProgrammingFile(const QString &name, const QString &folder);

    QString name() const { return m_name; }
    QString folder() const { return m_folder; }
    QString path() const;

    // Loaders, in the order of the screen.
    void LoadIvaFromFile(XmlViewTables &t);
    void LoadRepFromFile(XmlViewTables &t);      // 1 to 999
    void LoadCarteFromFile(XmlViewTables &t);
    void LoadTicketFromFile(XmlViewTables &t);
    void LoadFlagFromFile(XmlViewTables &t);
    void LoadIntFromFile(XmlViewTables &t);      // reads only
    void LoadLogoFromFile(XmlViewTables &t);     // reads only
    void LoadPS2FromFile(XmlViewTables &t);
    void LoadPromoFromFile(XmlViewTables &t);
    void LoadContantiFromFile(XmlViewTables &t);

    // Savers. Each one does nothing once a save has failed.
    void SaveVersionToFile();
    void SaveIvaToFile(const XmlViewTables &t);
    void SaveRepToFile(const XmlViewTables &t);
    void SaveCarteToFile(const XmlViewTables &t);
    void SaveTicketToFile(const XmlViewTables &t);
    void SaveFlagToFile(const XmlViewTables &t);
    void SaveLogoToFile(const XmlViewTables &t);
    void SaveIntToFile(const XmlViewTables &t);
    void SavePS2ToFile(const XmlViewTables &t);
    void SavePromoToFile(const XmlViewTables &t);
    void SaveContantiToFile(const XmlViewTables &t);

    // A whole save: the file as it was before it is kept in memory, and put
    // back when the saving fails half-way, so that no half-written file is
    // left behind. rollBack() tells whether the old state is back on disk.
    void beginSave();
    bool rollBack();

    // The first problem met with the file, as a text for the technician;
    // empty when there was none.
    QString problem() const { return m_problem; }
    bool saveFailed() const { return m_saveFailed; }

private:
    enum class Use { Load, Save };
    bool open(XmlSettings &settings, Use use); // false: the saving has failed already
    void close(XmlSettings &settings); // saves unless the file is to be left alone
    void update(XmlSettings &settings);
    void note(const QString &problem);

    QString m_name;
    QString m_folder;
    bool m_checked = false;
    bool m_leaveAlone = false; // exists, but not ours to rewrite
    bool m_saveFailed = false;
    QString m_problem;
    std::optional<QByteArray> m_before; // content before the save; nullopt: there was no file
    bool m_beforeKept = false;
};
