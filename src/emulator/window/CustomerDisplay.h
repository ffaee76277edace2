// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The customer display of the printer, two lines of 20 characters, as it
// follows the receipt being printed: each item with its amount, then the
// total and the change.
class CustomerDisplay
{
public:
    static constexpr int Width = 20;

    // Every printed line passes here; only those of a receipt move the display.
    void printed(const QString &line);
    QString top() const { return m_top; }
    QString bottom() const { return m_bottom; }
    QString text() const { return m_top + QLatin1Char('\n') + m_bottom; }

private:
    QString m_top = QStringLiteral("BENVENUTI");
    QString m_bottom;
    bool m_totalShown = false;
};

// The picture of logo number n among the logo records the printer keeps
// (GS ( L definitions, one black plane); a null image when none fits.
class QImage;
QImage LogoPicture(const QList<QByteArray> &logos, int n);
