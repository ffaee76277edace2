// SPDX-License-Identifier: GPL-3.0-or-later
#include "CustomerDisplay.h"

#include <QImage>
#include <QRegularExpression>

void CustomerDisplay::printed(const QString &line)
{
    if (line.startsWith(QLatin1Char('~'))) { // the cut: the next receipt starts afresh
        m_totalShown = false;
        return;
    }
    // A row of the receipt: a label on the left, an amount on the right.
    static const QRegularExpression row(QStringLiteral("^\\s*(\\S.*?)\\s{2,}(-?[0-9.]+,[0-9]{2,})$"));
    const auto m = row.match(line);
    if (!m.hasMatch())
        return;
    QString label = m.captured(1);
    if (label.startsWith(QLatin1String("TOTALE")))
        label = QStringLiteral("TOTALE");
    const QString amount = m.captured(2);
    const auto pair = [](const QString &left, const QString &right) {
        return left.left(Width - right.size() - 1).leftJustified(Width - right.size()) + right;
    };
    if (label == QLatin1String("TOTALE")) {
        m_totalShown = true;
        m_top = pair(label, amount);
        m_bottom.clear();
    } else if (label == QLatin1String("RESTO")) {
        m_bottom = pair(label, amount);
    } else if (!m_totalShown) {
        m_top = label.left(Width);
        m_bottom = amount.rightJustified(Width);
    } // else a payment: the total stays until the change
}

QImage LogoPicture(const QList<QByteArray> &logos, int n)
{
    struct Found { int key; QImage image; };
    QList<Found> found;
    for (const QByteArray &data : logos) {
        for (qsizetype at = data.indexOf("\x1d\x28\x4c"); at >= 0 && at + 16 <= data.size();
             at = data.indexOf("\x1d\x28\x4c", at + 3)) {
            const auto u = [&data](qsizetype i) { return int(static_cast<unsigned char>(data[i])); };
            if (data.mid(at + 5, 3) != "0C0")
                continue;
            const int length = u(at + 3) | u(at + 4) << 8;
            const int width = u(at + 11) | u(at + 12) << 8;
            const int height = u(at + 13) | u(at + 14) << 8;
            const int rowBytes = (width + 7) / 8;
            if (width <= 0 || height <= 0 || width > 2048 || height > 2048 || length < 11 + rowBytes * height
                || at + 16 + qsizetype(rowBytes) * height > data.size())
                continue;
            QImage image(width, height, QImage::Format_Mono);
            image.setColorTable({qRgb(251, 250, 244), qRgb(43, 47, 58)});
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x)
                    image.setPixel(x, y, (u(at + 16 + y * rowBytes + x / 8) >> (7 - x % 8)) & 1);
            found.append({data.mid(at + 8, 2).toInt(), image});
        }
    }
    for (const Found &f : found)
        if (f.key == n)
            return f.image;
    return found.isEmpty() ? QImage() : found.first().image;
}
