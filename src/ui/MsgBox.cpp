// SPDX-License-Identifier: GPL-3.0-or-later
#include "MsgBox.h"

#include <QAbstractButton>
#include <QApplication>

namespace {
struct Recorder
{
    bool on = false;
    QList<QMessageBox::StandardButton> answers;
    QList<MsgBox::Shown> shown;
};

Recorder &recorder()
{
    static Recorder r;
    return r;
}
}

QString MsgBox::applicationTitle()
{
    return QStringLiteral("Fiscorda");
}

QMessageBox::StandardButton MsgBox::show(const QString &text, QMessageBox::StandardButtons buttons,
                                         QMessageBox::Icon icon, const QString &title)
{
    const QString caption = title.isEmpty() ? applicationTitle() : title;
    Recorder &r = recorder();
    if (r.on) {
        r.shown.append({caption, text, buttons, icon});
        if (!r.answers.isEmpty())
            return r.answers.takeFirst();
        if (buttons.testFlag(QMessageBox::Ok))
            return QMessageBox::Ok;
        if (buttons.testFlag(QMessageBox::Yes))
            return QMessageBox::Yes;
        return QMessageBox::NoButton;
    }
    QMessageBox box(icon, caption, text, buttons, QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MsgBox"));
    // The interface is Italian whatever translations the system carries.
    static const struct { QMessageBox::StandardButton button; const char *text; } italian[] = {
        {QMessageBox::Ok, "OK"}, {QMessageBox::Yes, "Sì"}, {QMessageBox::No, "No"}, {QMessageBox::Cancel, "Annulla"},
    };
    for (const auto &b : italian) {
        if (QAbstractButton *button = box.button(b.button))
            button->setText(QString::fromUtf8(b.text));
    }
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

void MsgBox::startRecording()
{
    recorder() = Recorder{};
    recorder().on = true;
}

void MsgBox::stopRecording()
{
    recorder() = Recorder{};
}

bool MsgBox::recording()
{
    return recorder().on;
}

void MsgBox::queueAnswer(QMessageBox::StandardButton answer)
{
    recorder().answers.append(answer);
}

QList<MsgBox::Shown> MsgBox::shown()
{
    return recorder().shown;
}

QStringList MsgBox::shownTexts()
{
    QStringList texts;
    for (const Shown &s : recorder().shown)
        texts.append(s.text);
    return texts;
}

void MsgBox::clearShown()
{
    recorder().shown.clear();
}
