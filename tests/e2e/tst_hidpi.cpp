// SPDX-License-Identifier: GPL-3.0-or-later
// Every screen at the scale QT_SCALE_FACTOR sets fits a 1280x720 desktop, and
// its widgets, button texts and grid columns have room.
#include "EmulatorTestEnv.h"
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "app/FpMonitorForm.h"
#include "app/SetupPrnForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "commissioning/LoghiForm.h"
#include "decommissioning/RemoveStepForm.h"
#include "journal/DGFEForm.h"
#include "journal/GiornaleDGFEForm.h"
#include "journal/GiornaleStepForm.h"
#include "paperwork/InstallExtraModForm.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "programming/ProgForm.h"
#include "programming/XmlViewForm.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "simulator/XRepForm.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QScrollArea>
#include <QTableView>
#include <QtTest>
#include <functional>
#include <memory>

namespace {

// 1280x720 logical pixels (1920x1080 at 150 %), less a title bar and a panel.
const QSize kRoom(1280, 720 - 70);

using Maker = std::function<QWidget *()>;

template <typename Form>
Maker make(std::function<void()> before = {})
{
    return [before] {
        if (before)
            before();
        return static_cast<QWidget *>(new Form(nullptr));
    };
}

bool insideScrolledContents(const QWidget *w, const QWidget *window)
{
    for (const QWidget *p = w->parentWidget(); p && p != window; p = p->parentWidget())
        if (qobject_cast<const QAbstractScrollArea *>(p))
            return true;
    return false;
}

} // namespace

class TestHiDpi : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        env->linkShippedFiles();
        QVERIFY(env->startOnTcp());
    }
    void cleanup() { env.reset(); }

    void screenFits_data()
    {
        QTest::addColumn<Maker>("maker");
        QTest::newRow("FiscordaForm") << Maker([] { return static_cast<QWidget *>(new FiscordaForm(gFPControl)); });
        QTest::newRow("SetupPrnForm") << make<SetupPrnForm>();
        QTest::newRow("DataOraForm") << make<DataOraForm>([] { DataOraForm::WizardMode = false; });
        QTest::newRow("FpMonitorForm") << make<FpMonitorForm>();
        QTest::newRow("InstallHeaderForm") << make<InstallHeaderForm>([] { InstallHeaderForm::StandaloneMode = true; });
        QTest::newRow("InstallFlagForm") << make<InstallFlagForm>([] { InstallFlagForm::StandaloneMode = true; });
        QTest::newRow("InstallLogoForm") << make<InstallLogoForm>([] { InstallLogoForm::StandaloneMode = true; });
        QTest::newRow("LoghiForm") << make<LoghiForm>();
        for (int kind : {0, 1, 2, 3, 4, 5, 6})
            QTest::addRow("ProgForm %d", kind) << make<ProgForm>([kind] {
                ProgForm::WizardMode = false;
                ProgForm::TableKind = kind;
            });
        QTest::newRow("XmlViewForm") << make<XmlViewForm>([] { XmlViewForm::FormMode = 1; });
        QTest::newRow("GiornaleDGFEForm") << make<GiornaleDGFEForm>();
        QTest::newRow("DGFEForm") << make<DGFEForm>();
        QTest::newRow("GiornaleStepForm") << make<GiornaleStepForm>();
        QTest::newRow("KelvoFpSimulaForm") << make<KelvoFpSimulaForm>();
        QTest::newRow("XRepForm") << make<XRepForm>();
        QTest::newRow("InstallExtraModForm") << make<InstallExtraModForm>();
        QTest::newRow("InstallLibrettoFiscaleForm") << make<InstallLibrettoFiscaleForm>();
        for (int mode : {1, 2, 3})
            QTest::addRow("PrintFoglioForm %d", mode) << make<PrintFoglioForm>([mode] { PrintFoglioForm::PrintMode = mode; });
        QTest::newRow("RemoveStepForm") << make<RemoveStepForm>();
    }

    void screenFits()
    {
        QFETCH(Maker, maker);
        // Whatever a screen opens modally while it loads is closed at once.
        QTimer closer;
        connect(&closer, &QTimer::timeout, [] {
            if (QWidget *modal = QApplication::activeModalWidget())
                modal->close();
        });
        closer.start(20);
        std::unique_ptr<QWidget> form(maker());
        closer.stop();
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
        QCoreApplication::processEvents(); // the layouts' last turn

        QVERIFY2(form->width() <= kRoom.width() && form->height() <= kRoom.height(),
                 qPrintable(QStringLiteral("%1x%2").arg(form->width()).arg(form->height())));
        for (QWidget *w : form->findChildren<QWidget *>()) {
            if (w->isWindow() || !w->isVisibleTo(form.get()) || insideScrolledContents(w, form.get()))
                continue;
            const QString where = w->objectName() + QLatin1Char('/') + QLatin1String(w->metaObject()->className());
            QVERIFY2(w->parentWidget()->rect().contains(w->geometry()), qPrintable(where + " outside its parent"));
            if (auto *b = qobject_cast<QAbstractButton *>(w); b && !b->text().isEmpty()) {
                const QSize need = b->minimumSizeHint();
                QVERIFY2(b->width() >= need.width() && b->height() >= need.height(),
                         qPrintable(where + QStringLiteral(" cut: %1 < %2").arg(QDebug::toString(b->size()), QDebug::toString(need))));
            }
        }
        for (QTableView *grid : form->findChildren<QTableView *>()) {
            const QHeaderView *header = grid->horizontalHeader();
            for (int c = 0; c < header->count(); ++c) {
                if (header->isSectionHidden(c))
                    continue;
                const int need = qMax(header->sectionSizeHint(c), static_cast<const QAbstractItemView *>(grid)->sizeHintForColumn(c));
                QVERIFY2(header->sectionSize(c) >= need,
                         qPrintable(grid->objectName() + QStringLiteral(" column %1: %2 < %3")
                                                             .arg(c)
                                                             .arg(header->sectionSize(c))
                                                             .arg(need)));
            }
        }
        form->close();
    }
};

QTEST_MAIN(TestHiDpi)
#include "tst_hidpi.moc"
