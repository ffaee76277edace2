#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>

// "Scelta loghi": the standard logos as pictures. It also owns the sending
// of a logo and of a logo number, which every sender uses.
class LoghiForm : public QDialog
{
    Q_OBJECT
public:
    explicit LoghiForm(QWidget *parent = nullptr);

    // Sends a logo file; result 0 when done, anything else a failure.
    static void SaveLogo(QString &fileName, int16_t &result);
    // Writes a logo parameter when the control is free; reports a refusal.
    static void ProgFlag(int16_t &number, int16_t &value);
};

// The standard logo file of a number (2..9) for the printer's receipt width.
QString StandardLogoFile(int16_t number);
