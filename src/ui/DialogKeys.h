// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QDialog;

// The one rule for Enter and Esc in every form of the program, watched for
// the whole application:
// - Enter presses no button. Qt would press a dialog's default button (the
//   first push button unless told otherwise) from any field; no button of
//   the program has that key. A form that reads the key itself (the sale
//   keypad) still gets it.
// - Esc is the close box: it closes the form the way its close box does. A
//   form that is a step of a procedure the law prescribes (the commissioning
//   chain, the two wizards) ignores it instead, so a stray key cannot end
//   the procedure; its close box stays as it is.
// Qt's own dialogs (message boxes, file and print dialogs) keep their keys.
class DialogKeys : public QObject
{
public:
    // Once per application; later calls do nothing.
    static void install();
    // Marks a form as a step on which Esc does nothing.
    static void ignoreEscape(QDialog *dialog, bool ignore = true);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};
