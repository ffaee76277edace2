// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogKeys.h"

#include <QAbstractButton>
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

namespace {
const char *const kIgnoresEscape = "fiscordaIgnoresEscape";

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
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!enter && key != Qt::Key_Escape)
        return false;
    auto *widget = static_cast<QWidget *>(watched);
    auto *dialog = qobject_cast<QDialog *>(widget->window());
    if (!dialog || IsQtsOwn(dialog))
        return false;
    // A key press goes to the field first and then up to the form; only
    // what no field has taken reaches the form, where Qt would press the
    // default button or reject the dialog.
    if (enter)
        return widget == dialog || qobject_cast<QAbstractButton *>(widget);
    if (widget != dialog)
        return false;
    if (!dialog->property(kIgnoresEscape).toBool())
        dialog->close();
    return true;
}
