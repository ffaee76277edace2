// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

// The faces of the keypad's picture keys, drawn here rather than loaded: a
// glyph, on a coloured cap where the key has a colour, or a small symbol for
// the device keys. The button around them is the only frame. They are drawn
// afresh at the size and pixel ratio asked for, so they stay sharp at any
// screen scale.
namespace KeyFaces {

constexpr int Size = 48; // logical pixels of a face

enum class Symbol { Drawer, Feed, Lock, Unlock };

// A key cap with text on it ("7", "00", "CL", "+€", "-%").
QIcon glyph(const QString &text, const QColor &cap = QColor(0xe8, 0xe8, 0xe8), const QColor &ink = Qt::black);
QIcon symbol(Symbol which);

} // namespace KeyFaces
