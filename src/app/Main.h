// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class FiscordaForm;
class KelvoFPControl;

// The program's start: refuses a second instance, loads the main form,
// makes the control ready and probes the printer, then shows the main form.
// Returns the main form, or nullptr when another instance already runs.
FiscordaForm *Main(KelvoFPControl *control);
