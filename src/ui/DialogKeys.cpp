// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogKeys.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialog>
#include <QErrorMessage>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>

namespace {
const char *const kIgnoresEscape = "fiscordaIgnoresEscape";

// Qt presses a dialog's default button on Enter, and a push button becomes
// the default when it takes the focus unless it is told otherwise.
void NoDefaultButton(QDialog *dialog)
{
    for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
}

bool IsQtsOwn(const QDialog *dialog)
{
    return qobject_cast<const QMessageBox *>(dialog) || qobject_cast<const QFileDialog *>(dialog)
           || qobject_cast<const QInputDialog *>(dialog) || qobject_cast<const QProgressDialog *>(dialog)
           || qobject_cast<const QErrorMessage *>(dialog) || qobject_cast<const QColorDialog *>(dialog)
           || qobject_cast<const QFontDialog *>(dialog) || dialog->inherits("QAbstractPrintDialog")
           || dialog->inherits("QPageSetupDialog") || dialog->inherits("QPrintPreviewDialog");
}
}

void DialogKeys::install()
{
    static DialogKeys *installed = nullptr;
    if (installed || !qApp)
        return;
    installed = new DialogKeys(qApp);
    qApp->installEventFilter(installed);
    QObject::connect(installed, &QObject::destroyed, [] { installed = nullptr; });
}

void DialogKeys::ignoreEscape(QDialog *dialog, bool ignore)
{
    dialog->setProperty(kIgnoresEscape, ignore);
}

bool DialogKeys::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if ((type != QEvent::KeyPress && type != QEvent::Show) || !watched->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(watched);
    auto *dialog = qobject_cast<QDialog *>(widget->window());
    if (!dialog || IsQtsOwn(dialog))
        return false;
    if (type == QEvent::Show) {
        if (widget == dialog)
            NoDefaultButton(dialog); // before the dialog picks one as it shows
        return false;
    }
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        // The key goes its way, to the field and up to the form, which may
        // give it a meaning of its own; there is just no button to press.
        NoDefaultButton(dialog);
        return false;
    }
    // A key press goes to the field first and then up to the form; only an
    // Esc that no field has taken (a list's popup, an editor) reaches it.
    if (key != Qt::Key_Escape || widget != dialog)
        return false;
    if (!dialog->property(kIgnoresEscape).toBool())
        dialog->close();
    return true;
}
