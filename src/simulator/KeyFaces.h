#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

// The faces of the keypad's picture keys, drawn here rather than loaded:
// a rounded key cap with a glyph, or a small symbol for the device keys.
namespace KeyFaces {

constexpr int Size = 48; // pixels of a face

enum class Symbol { Drawer, Feed, Lock, Unlock };

// A key cap with text on it ("7", "00", "CL", "+€", "-%").
QIcon glyph(const QString &text, const QColor &cap = QColor(0xe8, 0xe8, 0xe8), const QColor &ink = Qt::black);
QIcon symbol(Symbol which);

} // namespace KeyFaces
