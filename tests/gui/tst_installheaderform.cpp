// SPDX-License-Identifier: GPL-3.0-or-later
// The header screen against a scripted printer.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/PreviewForm.h"
#include "printer/SharedState.h"
#include "settings/RunTimeError.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

class TestInstallHeaderForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    QStringList printerLines; // what ReadHeaderLine answers, 1..6
    QString refusedStyle;     // the line whose ReadHeaderStyle fails

    void printer(const QString &prefix, const QString &firmware)
    {
        env->fake.setMatricola(prefix);
        env->fake.setProperty("FirmwareVersion", firmware);
    }
    QString filePath() const { return env->folder.filePath("KX90ProgQN41100123.xml"); }
    // Rows 1, 2 and 3 marked as company, address and VAT number.
    static void markRows(InstallHeaderForm &form)
    {
        for (int i = 0; i < 3; ++i)
            form.ComboContR[i]->setCurrentIndex(i);
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        InstallHeaderForm::StandaloneMode = true;
        printerLines = QStringList(6, QString(40, ' '));
        refusedStyle.clear();
        env->fake.handler = [this](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            if (c.name == "ReadHeaderLine")
                f.setProperty("HeaderLineText", printerLines.value(c.args[0].toInt() - 1));
            if (c.name == "ReadHeaderStyle" && c.args[0] == refusedStyle)
                return int16_t(-1);
            if (c.name == "ReadHeaderStyle")
                f.setProperty("HeaderStyle", c.args[0] == "3" ? "2" : "1");
            return std::nullopt;
        };
        printer("QN", "2.10");
    }
    void cleanup() { env.reset(); }

    void widthByModelAndFirmware_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<int>("width");
        QTest::newRow("KX90 firmware 1") << "QN" << "1.20" << 27;
        QTest::newRow("KX90 firmware 2") << "QN" << "2.00" << 40;
        QTest::newRow("KX90 II firmware 1") << "QM" << "1.05" << 40;
        QTest::newRow("KX81 firmware 1") << "QO" << "1.20" << 40;
    }
    void widthByModelAndFirmware()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, firmware);
        QFETCH(int, width);
        printer(prefix, firmware);
        gRagioneSociale = {"old"};
        gSede = {"old", "old"};
        InstallHeaderForm form;
        QCOMPARE(form.maxChars, width);
        QCOMPARE(form.lblMaxCar->text(), QStringLiteral("Lunghezza massima riga %1 caratteri").arg(width));
        QCOMPARE(gRagioneSociale, QStringList{""});
        QCOMPARE(gSede, QStringList{""});
        // Only the 40-character printers are read back; the others stay
        // empty, with nothing chosen and nothing ticked.
        QCOMPARE(env->fake.count("ReadHeaderLine"), width == 40 ? 6 : 0);
        QCOMPARE(form.comboTipoR[0]->currentIndex(), width == 40 ? 3 : -1);
        QCOMPARE(form.checkCentraR[5]->isChecked(), width == 40);
        QCOMPARE(form.btnNext->text(), QStringLiteral("APPLICA"));
    }

    void readBack()
    {
        printerLines[0] = QStringLiteral("   BAR SPORT").leftJustified(40);
        refusedStyle = "2";
        env->fake.setProperty("ErrorCode", "3");
        InstallHeaderForm form;
        QCOMPARE(form.txtR[0]->text(), QStringLiteral("BAR SPORT"));
        QCOMPARE(form.comboTipoR[0]->currentIndex(), 0);
        QCOMPARE(form.comboTipoR[1]->currentIndex(), 0); // failed: style 0, and reported
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Errore del registratore di cassa: STAMPANTE OFFLINE.\r\n"});
        QCOMPARE(form.comboTipoR[2]->currentIndex(), 1);
        for (int i = 0; i < 6; ++i) { // a programmed printer gets no defaults
            QVERIFY(!form.checkCentraR[i]->isChecked());
            QCOMPARE(form.ComboContR[i]->currentIndex(), 3);
        }
    }

    void centring_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("centred");
        QTest::addColumn<QString>("sent"); // "!" for the run-ending failure
        const QString x38(38, 'X');
        QTest::newRow("empty") << 40 << "" << true << QString(38, ' ');
        QTest::newRow("d 31 -> h 16") << 40 << "  ABCDEFGHI " << true << QString(15, ' ') + "ABCDEFGHI" + QString(15, ' ');
        QTest::newRow("d 9 -> h 4") << 40 << QString(31, 'A') << true << "   " + QString(31, 'A') + "   ";
        QTest::newRow("d 7 -> h 4") << 40 << QString(33, 'A') << true << "   " + QString(33, 'A') + "   ";
        QTest::newRow("d 5 -> h 2") << 40 << QString(35, 'A') << true << " " + QString(35, 'A') + " ";
        QTest::newRow("m-3") << 40 << QString(37, 'A') << true << " " + QString(37, 'A') + " ";
        QTest::newRow("m-2") << 40 << x38 << true << x38;
        QTest::newRow("m-1 typed, m-3 trimmed") << 40 << " " + QString(37, 'A') + " " << true << " " + QString(37, 'A') + " ";
        QTest::newRow("m-1") << 40 << QString(39, 'A') << true << "!";
        QTest::newRow("m, not trimmed") << 40 << " " + QString(39, 'A') << true << " " + QString(39, 'A');
        QTest::newRow("over m, cut") << 40 << " " + QString(45, 'A') << true << " " + QString(39, 'A');
        QTest::newRow("not centred: cut, then trimmed") << 40 << " " + QString(38, 'A') + " BB" << false << QString(38, 'A');
        QTest::newRow("27: m-3") << 27 << QString(24, 'A') << true << " " + QString(24, 'A') + " ";
        QTest::newRow("27: m-1") << 27 << QString(26, 'A') << true << "!";
    }
    void centring()
    {
        QFETCH(int, width);
        QFETCH(QString, typed);
        QFETCH(bool, centred);
        QFETCH(QString, sent);
        if (width == 27)
            printer("QN", "1.20");
        InstallHeaderForm form;
        markRows(form);
        form.txtR[0]->setText(typed);
        form.comboTipoR[0]->setCurrentIndex(0);
        form.checkCentraR[0]->setChecked(centred);
        env->fake.clearCalls();
        if (sent == "!") {
            // One short of the width asks for -1 blanks: the run ends there,
            // after the line's style, before its text and the closing lines.
            QVERIFY_THROWS_EXCEPTION(RunTimeError, form.btnNext_Click());
            QCOMPARE(env->fake.sent(u',', "WriteHeader"), QStringList{"WriteHeaderStyle(1,1)"});
            QVERIFY(!QFile::exists(filePath()));
            return;
        }
        form.btnNext_Click();
        QCOMPARE(env->fake.callsOf("WriteHeaderLine").first().args, QStringList({"1", sent}));
    }

    void writesInOrderAndTheFile()
    {
        printer("QN", "1.20"); // 27 characters, nothing chosen
        InstallHeaderForm form;
        markRows(form);
        form.txtR[0]->setText("  Bar \"Sport\" & C.  ");
        form.comboTipoR[0]->setCurrentIndex(3);
        form.checkCentraR[0]->setChecked(true);
        form.txtR[1]->setText("Via Roma 1");
        form.txtR[2]->setText("01234567890");
        env->fake.clearCalls();
        form.btnNext_Click();
        const QString bar = QString(5, ' ') + "Bar \"Sport\" & C." + QString(5, ' ');
        QCOMPARE(env->fake.sent(u',', "WriteHeader"),
                 QStringList({"WriteHeaderStyle(1,4)", "WriteHeaderLine(1," + bar + ")", "WriteHeaderStyle(2,0)",
                              "WriteHeaderLine(2,Via Roma 1)", "WriteHeaderStyle(3,0)", "WriteHeaderLine(3,01234567890)",
                              "WriteHeaderStyle(4,0)", "WriteHeaderLine(4,)", "WriteHeaderStyle(5,0)", "WriteHeaderLine(5,)",
                              "WriteHeaderStyle(6,0)", "WriteHeaderLine(6,)", "WriteHeaderLine(98,)", "WriteHeaderLine(99,)"}));
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QVERIFY(!form.isVisible());
        // The lines as typed, an unchosen style as -1, the positions 0.
        QCOMPARE(TestFiles::contentOf(filePath()),
                 QByteArray("<settings><InstallInt TipoR1=\"3\" TipoR2=\"-1\" TipoR3=\"-1\" TipoR4=\"-1\" TipoR5=\"-1\" "
                            "TipoR6=\"-1\" R1=\"  Bar &quot;Sport&quot; &amp; C.  \" R2=\"Via Roma 1\" "
                            "R3=\"01234567890\" R4=\"\" R5=\"\" R6=\"\" PosR1=\"0\" PosR2=\"0\" PosR3=\"0\" "
                            "PosR4=\"0\" PosR5=\"0\" PosR6=\"0\"/></settings>"));
    }

    void refusedAndSkippedWrites()
    {
        InstallHeaderForm form;
        markRows(form);
        env->fake.clearCalls();
        env->fake.setProperty("ErrorCode", "17");
        env->fake.queueResult("WriteHeaderStyle", -1); // ignored
        env->fake.queueResult("WriteHeaderLine", 0);
        env->fake.queueResult("WriteHeaderLine", -1); // line 2: the lines end here
        form.btnNext_Click();
        QCOMPARE(env->fake.callNames().join(' '),
                 QStringLiteral("WriteHeaderStyle WriteHeaderLine WriteHeaderStyle WriteHeaderLine "
                                "WriteHeaderLine WriteHeaderLine"));
        QCOMPARE(env->fake.sent(u',', "WriteHeader").mid(4), QStringList({"WriteHeaderLine(98,)", "WriteHeaderLine(99,)"}));
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QVERIFY(TestFiles::contentOf(filePath()).contains("TipoR1=\"3\""));
    }

    void brokenOrUnwritableFile()
    {
        TestFiles::writeFile(filePath(), "<settings><InstallIva");
        {
            InstallHeaderForm form;
            markRows(form);
            form.btnNext_Click();
        }
        const QStringList aside = QDir(env->folder.path()).entryList({"KX90ProgQN41100123.xml.danneggiato-*"});
        QCOMPARE(aside.size(), 1);
        QCOMPARE(TestFiles::contentOf(env->folder.filePath(aside.first())), QByteArray("<settings><InstallIva"));
        QVERIFY(TestFiles::contentOf(filePath()).startsWith("<settings><InstallInt TipoR1=\"3\""));

        // A name that cannot be written (a folder holds it): told, no crash.
        QVERIFY(QFile::remove(filePath()));
        QVERIFY(QDir(env->folder.path()).mkdir(QFileInfo(filePath()).fileName()));
        InstallHeaderForm form;
        markRows(form);
        form.btnNext_Click();
        QVERIFY(MsgBox::shownTexts().value(0).startsWith("Impossibile salvare le impostazioni della stampante.\r\n"));
        QVERIFY(QFileInfo(filePath()).isDir());
        QVERIFY(!form.isVisible());
    }

    void rowsHandedOnAndPreviewed()
    {
        InstallHeaderForm form;
        form.btnNext_Click(); // nothing marked
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Indicare Ragione sociale, indirizzo e partita iva!"});
        QVERIFY(env->fake.callsOf("WriteHeaderLine").isEmpty());

        markRows(form);
        form.ComboContR[3]->setCurrentIndex(0); // an empty company row still counts
        form.ComboContR[4]->setCurrentIndex(2);
        form.txtR[0]->setText(QString(45, 'A'));
        form.comboTipoR[1]->setCurrentIndex(1);
        form.checkCentraR[1]->setChecked(false);
        form.txtR[1]->setText("Via Roma 1");
        form.txtR[4]->setText("IT555");
        QStringList cells; // length|size|bold|centred of the first two rows
        for (int i = 0; i < 3; ++i) {
            whenModal("PreviewForm", [&](QWidget *w) {
                auto *preview = static_cast<PreviewForm *>(w);
                for (int r = 0; r < 2; ++r) {
                    const QTableWidgetItem *cell = preview->gridPreview->item(r, 0);
                    cells << QStringLiteral("%1|%2|%3|%4").arg(cell->text().size()).arg(cell->font().pointSize())
                                 .arg(cell->font().bold())
                                 .arg(Qt::Alignment(cell->textAlignment()).testFlag(Qt::AlignHCenter));
                }
                preview->btnOk->click();
            });
            form.btnPrev->click();
        }
        QCOMPARE(cells.mid(0, 2), QStringList({"40|14|1|1", "10|8|1|0"}));
        form.btnNext_Click();
        // Every check appends once more: three previews and the programming.
        QCOMPARE(gRagioneSociale.size(), 8);
        QCOMPARE(gRagioneSociale.mid(0, 2), QStringList({QString(45, 'A'), ""}));
        QCOMPARE(gIndirizzo, QStringList(4, "Via Roma 1"));
        QCOMPARE(gPartitaIva, QStringLiteral("IT555"));
    }
};

QTEST_MAIN(TestInstallHeaderForm)
#include "tst_installheaderform.moc"
