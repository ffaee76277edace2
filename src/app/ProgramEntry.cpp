// SPDX-License-Identifier: GPL-3.0-or-later
#include "FiscordaApplication.h"
#include "FiscordaForm.h"
#include "Main.h"
#include "printer/KelvoProtocolControl.h"
#include "settings/RunTimeError.h"

#include <memory>

int main(int argc, char *argv[])
{
    FiscordaApplication app(argc, argv);
    KelvoProtocolControl control;
    std::unique_ptr<FiscordaForm> form;
    try {
        form.reset(Main(&control));
    } catch (const RunTimeError &error) {
        FiscordaApplication::endRun(error);
    }
    if (!form)
        return 0;
    return app.exec();
}
