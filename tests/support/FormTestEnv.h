// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FakeFPControl.h"
#include "paperwork/SystemPrinters.h"
#include "settings/Conversions.h"
#include "settings/ProgramFolder.h"
#include "ui/DialogKeys.h"
#include "ui/FileDialog.h"
#include "ui/MsgBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

// What a form test asks for beyond the usual.
struct FormTestOptions
{
    bool fileDialogs = false; // file dialogs recorded instead of shown
    bool italian = false;     // the Italian locale for the test's length
    std::optional<QList<SystemPrinters::Printer>> printers = std::nullopt; // the system's printers, as the test says
};

// What a form test stands on: a scriptable control as gFPControl, an empty
// program folder of its own, and message boxes recorded instead of shown.
struct FormTestEnv
{
    using Options = FormTestOptions;
    FakeFPControl fake;
    QTemporaryDir folder;
    const Options options;

    explicit FormTestEnv(Options with = {})
        : options(with)
    {
        gFPControl = &fake;
        SetProgramFolderForTests(folder.path());
        MsgBox::startRecording();
        DialogKeys::install();
        if (options.fileDialogs)
            FileDialog::startRecording();
        if (options.italian)
            Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
        if (options.printers)
            SystemPrinters::useForTests(*options.printers);
    }
    ~FormTestEnv()
    {
        // Watches for forms that never came end with the test.
        qDeleteAll(qApp->findChildren<QTimer *>(QStringLiteral("whenModal"), Qt::FindDirectChildrenOnly));
        if (options.printers)
            SystemPrinters::stopUsingTestPrinters();
        if (options.italian)
            Conv::setLocaleForTests(QLocale::system());
        if (options.fileDialogs)
            FileDialog::stopRecording();
        MsgBox::stopRecording();
        SetProgramFolderForTests(QString());
        gFPControl = nullptr;
    }
    QString settingsPath() const { return folder.filePath(QStringLiteral("Settings.xml")); }
    void writeSettings(const QString &keys) const
    {
        QFile f(settingsPath());
        if (f.open(QIODevice::WriteOnly))
            f.write(("<settings>" + keys + "</settings>").toUtf8());
    }
    QString readSettings() const
    {
        QFile f(settingsPath());
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }
};

// For a form that a click or the start-up opens modally: acts on it as soon
// as it is the active modal window; gives up after timeoutMs or with the
// test's FormTestEnv.
inline void whenModal(const QString &objectName, std::function<void(QWidget *)> action, int timeoutMs = 5000)
{
    auto *timer = new QTimer(qApp);
    timer->setObjectName(QStringLiteral("whenModal"));
    QElapsedTimer clock;
    clock.start();
    QObject::connect(timer, &QTimer::timeout, [=] {
        QWidget *modal = QApplication::activeModalWidget();
        const bool found = modal && modal->objectName() == objectName;
        if (found || clock.hasExpired(timeoutMs)) {
            timer->stop();
            timer->deleteLater();
        }
        if (found)
            action(modal);
    });
    timer->start(10);
}
