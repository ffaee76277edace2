// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <optional>

class QWidget;

// The file dialogs of the program: Qt's own dialog; a cancel comes back as
// an empty optional. Tests queue the answers in advance (a path, or
// std::nullopt for a cancel); while recording no dialog is shown.
class FileDialog
{
public:
    struct Asked
    {
        bool save;
        QString caption;
        QString folder;
        QString filter;
        QString selectedFilter; // the filter in force when the dialog opens
        bool askBeforeReplacing = true;
    };

    // Whether a save over an existing file asks first.
    enum class Existing { Ask, Replace };

    static std::optional<QString> open(QWidget *parent, const QString &caption, const QString &folder,
                                       const QString &filter, const QString &selectedFilter = QString());
    static std::optional<QString> save(QWidget *parent, const QString &caption, const QString &proposed,
                                       const QString &filter, Existing existing = Existing::Ask);

    // Tests
    static void startRecording();
    static void stopRecording();
    static void queueAnswer(const std::optional<QString> &answer);
    static QList<Asked> asked();
};
