// SPDX-License-Identifier: GPL-3.0-or-later
// The journal change wizard: its tab strip, the printer-off probe, the second
// step per model, the format step.
#include "FormTestEnv.h"
#include "journal/GiornaleStepForm.h"

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

static const QString kJump = QStringLiteral("Puoi avanzare un passo alla volta");
static const QString kOff = QStringLiteral("Spegni la stampante!");

class TestGiornaleStepForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

    static void clickTab(GiornaleStepForm &form, int index)
    {
        QTabBar *bar = form.SSTab1->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    }
    void printerOn(bool on) { env->fake.setDefaultResult("ReadDateTime", on ? 0 : 1); }
    static void writePicture(const QString &folder, const QString &file, const QColor &colour)
    {
        QDir().mkpath(folder);
        QImage img(40, 30, QImage::Format_RGB32);
        img.fill(colour);
        QVERIFY(img.save(QDir(folder).filePath(file), "JPG"));
    }
    static QColor centre(const QLabel *box)
    {
        const QImage img = box->pixmap().toImage();
        return img.pixelColor(img.width() / 2, img.height() / 2);
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        env->fake.setMatricola("QN");
        env->fake.setProperty("DgfeNumber", "4");
    }
    void cleanup() { env.reset(); }

    void load()
    {
        GiornaleStepForm form;
        QCOMPARE(form.SSTab1->count(), 6);
        QCOMPARE(form.SSTab1->currentIndex(), 0);
        QVERIFY(!form.btnBack->isEnabled() && form.btnFwd->isEnabled());
        QCOMPARE(form.lblDGFE->text(), QStringLiteral("5")); // the memory to insert
        QVERIFY(!form.PrinterOffChecked && !form.DgfeFormatted && !form.StepRefused && !form.TabClickIgnored);

        env->fake.queueResult("ReadDgfeStatus", -1);
        GiornaleStepForm failed;
        QCOMPARE(failed.lblDGFE->text(), QString());
        QVERIFY(MsgBox::shownTexts().isEmpty());
    }

    void tabRules_data()
    {
        QTest::addColumn<bool>("on");
        QTest::addColumn<QList<int>>("clicks"); // tab clicked; -1 AVANTI, -2 INDIETRO, -3 the control turns busy
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("probes");
        QTest::newRow("off, AVANTI") << false << QList<int>{-1} << QStringList{} << 1 << 1;
        QTest::newRow("on, AVANTI") << true << QList<int>{-1} << QStringList{kOff} << 0 << 1;
        QTest::newRow("on, jump to 3: one word") << true << QList<int>{2} << QStringList{kOff} << 0 << 1;
        QTest::newRow("off, jump to 4, then AVANTI without a new probe")
            << false << QList<int>{3, -1} << QStringList{kJump} << 1 << 1;
        QTest::newRow("jump to 5: no probe") << true << QList<int>{4} << QStringList{kJump} << 0 << 0;
        QTest::newRow("jump to 6: no probe") << true << QList<int>{5} << QStringList{kJump} << 0 << 0;
        QTest::newRow("off, steps then jump back") << false << QList<int>{-1, -1, -1, 0} << QStringList{kJump} << 3 << 1;
        QTest::newRow("off, forward and back by tabs") << false << QList<int>{1, 2, 1, 0} << QStringList{} << 0 << 1;
        QTest::newRow("on, probe until found off") << true << QList<int>{1, 1} << QStringList{kOff, kOff} << 0 << 2;
        QTest::newRow("busy control counts as on") << false << QList<int>{-3, -1} << QStringList{kOff} << 0 << 0;
    }
    void tabRules()
    {
        QFETCH(bool, on);
        QFETCH(QList<int>, clicks);
        printerOn(on);
        GiornaleStepForm form;
        form.show();
        for (int c : clicks) {
            if (c == -1)
                form.btnFwd->click();
            else if (c == -2)
                form.btnBack->click();
            else if (c == -3)
                env->fake.busy = true;
            else
                clickTab(form, c);
        }
        QTEST(MsgBox::shownTexts(), "texts");
        QTEST(form.SSTab1->currentIndex(), "tab");
        QTEST(env->fake.count("ReadDateTime"), "probes");
        QVERIFY(!form.StepRefused);
        // The buttons always fit the tab the strip is on.
        const int tab = form.SSTab1->currentIndex();
        QCOMPARE(form.btnBack->isEnabled(), tab != 0);
        QCOMPARE(form.btnFwd->text(), tab == 5 ? QStringLiteral("FINE") : QStringLiteral("AVANTI"));
    }

    void secondStepByModel_data()
    {
        QTest::addColumn<QByteArray>("prefix");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("rem");
        QTest::addColumn<QString>("rot");
        QTest::newRow("KX90") << QByteArray("QN") << "KX90"
                              << "1) Rimuovere il coperchio di plastica posto sul retro della stampante"
                              << "2) Ruotare la manopola che impedisce la fuoriuscita della memoria MMC";
        QTest::newRow("KX90 II") << QByteArray("QM") << "KX90II"
                                 << "1) Rimuovere il coperchio di plastica posto sul retro della stampante"
                                 << "2) Sollevare leggermente il fermo in plastica che impedisce la fuoriuscita della memoria MMC";
        QTest::newRow("KX81") << QByteArray("QO") << "KX81"
                              << "1) Sollevare leggermente il fermo in plastica posto sul retro della stampante"
                              << "   che impedisce la fuoriuscita della memoria MMC";
        QTest::newRow("unknown family: KX90") << QByteArray("ZZ") << "KX90"
                                              << "1) Rimuovere il coperchio di plastica posto sul retro della stampante"
                                              << "2) Ruotare la manopola che impedisce la fuoriuscita della memoria MMC";
    }
    void secondStepByModel()
    {
        QFETCH(QByteArray, prefix);
        QFETCH(QString, folder);
        env->fake.setMatricola(prefix.constData());
        // Each model's folder holds a picture of its own colour; the
        // insertion picture is missing everywhere.
        const QList<std::pair<QString, QColor>> colours{{"KX90", Qt::red}, {"KX90II", Qt::green}, {"KX81", Qt::blue}};
        for (const auto &[name, colour] : colours) {
            const QString dir = env->folder.filePath("img/" + name);
            writePicture(dir, "Estrazione_DGFE.jpg", colour);
            writePicture(dir, "Cambio_DGFE.jpg", colour);
        }
        GiornaleStepForm form;
        QTEST(form.lblPag2_rem->text(), "rem");
        QTEST(form.lblPag2_rot->text(), "rot");
        QCOMPARE(form.lblPag2_pull->text(),
                 QStringLiteral("3) Spingere la memoria e rilasciarla fino ad ottenere l'espulsione della stessa."));
        QColor expected;
        for (const auto &[name, colour] : colours)
            if (name == folder)
                expected = colour;
        for (const QLabel *box : {form.PictureEstrazioneDGFE, form.PictureCambioDGFE}) {
            const QColor got = centre(box);
            QVERIFY2(qAbs(got.red() - expected.red()) < 40 && qAbs(got.green() - expected.green()) < 40
                         && qAbs(got.blue() - expected.blue()) < 40,
                     qPrintable(box->objectName() + ": " + got.name()));
        }
        // The missing file leaves the picture the form came with.
        QVERIFY(!form.PictureInserimentoDGFE->pixmap().isNull());
        QCOMPARE(form.PictureInserimentoDGFE->pixmap().size(), QSize(400, 300));
    }

    void formatStep()
    {
        printerOn(false);
        GiornaleStepForm form;
        form.show();
        for (int i = 0; i < 4; ++i)
            form.btnFwd->click();
        QCOMPARE(form.SSTab1->currentIndex(), 4);
        QVERIFY(form.btnFwd->isEnabled());

        // Back from "Passo 5" before the format: AVANTI shut on "Passo 4",
        // open again at the next change.
        form.btnBack->click();
        QVERIFY(!form.btnFwd->isEnabled());
        form.btnBack->click();
        form.btnFwd->click();
        form.btnFwd->click();
        QCOMPARE(form.SSTab1->currentIndex(), 4);

        form.btnFwd->click();
        QCOMPARE(form.btnFwd->text(), QStringLiteral("FINE"));
        QVERIFY(!form.btnFwd->isEnabled());

        env->fake.setProperty("ErrorCode", "17");
        env->fake.queueResult("FormatDgfe", -1);
        form.btnFormat->click();
        QCOMPARE(MsgBox::shownTexts().size(), 1);
        QVERIFY(!form.btnFwd->isEnabled() && !form.DgfeFormatted);

        env->fake.setProperty("DgfeNumber", "5");
        bool monitorShown = false;
        whenModal("FpMonitorForm", [&](QWidget *w) {
            monitorShown = true;
            w->close();
        });
        form.btnFormat->click();
        QVERIFY(monitorShown);
        QCOMPARE(form.lblNewDgfe->text(), QStringLiteral("5"));
        QVERIFY(form.btnFwd->isEnabled() && form.DgfeFormatted);
        QCOMPARE(env->fake.callsOf("FormatDgfe").last().args, QStringList{"1"});

        // Once formatted, the way back and forth keeps FINE open.
        form.btnBack->click();
        form.btnFwd->click();
        QVERIFY(form.btnFwd->isEnabled());
        form.btnFwd->click();
        QVERIFY(!form.isVisible());

        // Opened again, the wizard reads the new memory's number.
        GiornaleStepForm again;
        QCOMPARE(again.lblDGFE->text(), QStringLiteral("6"));
        QCOMPARE(again.SSTab1->currentIndex(), 0);
    }

    void formatWithBusyControlCountsAsDone()
    {
        GiornaleStepForm form;
        env->fake.busy = true;
        whenModal("FpMonitorForm", [](QWidget *w) { w->close(); });
        form.btnFormat->click();
        QCOMPARE(env->fake.count("FormatDgfe"), 0);
        QVERIFY(form.DgfeFormatted && form.btnFwd->isEnabled());
        QCOMPARE(form.lblNewDgfe->text(), QString());
    }
};

QTEST_MAIN(TestGiornaleStepForm)
#include "tst_giornalestepform.moc"
