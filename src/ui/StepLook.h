// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QHBoxLayout;
class QLabel;
class QPushButton;

// The look the step-by-step screens share, so that they read alike: a step's
// heading in bold, a size larger than the text; the back and forward buttons
// side by side at the right, back first.
void MakeStepHeading(QLabel *label);
QHBoxLayout *StepButtons(QPushButton *back, QPushButton *forward);
