// SPDX-License-Identifier: GPL-3.0-or-later
// The logo screens and the logo transfer against a scripted control: the job
// cut into 100-byte pieces with a turn of the event loop after each, the
// time-outs around the closing text, the roads by model and firmware, the
// numbers written after a transfer, and the names the screens send.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "commissioning/InstallLogoForm.h"
#include "commissioning/LoghiForm.h"
#include "commissioning/LoghiPersForm.h"
#include "programming/ProgForm.h"
#include "settings/RunTimeError.h"
#include "ui/FileDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {
QByteArray bytesOf(qsizetype length)
{
    QByteArray data(length, Qt::Uninitialized);
    for (qsizetype i = 0; i < length; ++i)
        data[i] = char('A' + i % 26);
    return data;
}
}

class TestLogoForms : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    QStringList sent;        // the data of every SendRawData, in order
    int refusedSend = -1;    // the SendRawData the printer refuses
    QList<int> ackAtPiece;   // TimeoutAck when each piece went
    QList<bool> turnBefore;  // whether the event loop had turned since the piece before
    bool turned = false;

    QString logoFolder() const { return env->folder.filePath("LoghiStandard"); }
    void setModel(const char *prefix, const char *firmware = "2.10")
    {
        env->fake.setMatricola(prefix);
        env->fake.setProperty("FirmwareVersion", firmware);
    }
    void writePicture(const QString &name, const QColor &colour)
    {
        QImage image(64, 16, QImage::Format_RGB32);
        image.fill(colour);
        QVERIFY(image.save(QDir(logoFolder()).filePath(name), "BMP"));
    }
    QStringList logoCalls() const
    {
        QStringList names;
        for (const QString &n : env->fake.callNames())
            if (n.contains("Raw") || n == "LoadLogoFile" || n == "WriteParam")
                names << n;
        return names;
    }

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.fileDialogs = true});
        QDir(env->folder.path()).mkdir("LoghiStandard");
        setModel("QN");
        env->fake.setProperty("PrinterStatus", "0010");
        sent.clear();
        refusedSend = -1;
        turned = false;
        ackAtPiece.clear();
        turnBefore.clear();
        env->fake.handler = [this](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            if (c.name == "SendRawData") {
                sent << c.args.value(0);
                ackAtPiece << f.TimeoutAck();
                turnBefore << turned;
                turned = false;
                QTimer::singleShot(0, this, [this] { turned = true; });
                if (sent.size() - 1 == refusedSend)
                    return int16_t(3);
            }
            return std::nullopt;
        };
    }
    void cleanup() { env.reset(); }

    void pieces_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<QList<int>>("sizes");
        QTest::addColumn<int>("refused"); // the send the printer refuses, -1 none
        QTest::newRow("empty") << 0 << QList<int>{32, 0, 38} << -1;
        QTest::newRow("short") << 99 << QList<int>{32, 99, 38} << -1;
        QTest::newRow("two whole pieces") << 200 << QList<int>{32, 100, 100, 0, 38} << -1;
        QTest::newRow("with a rest") << 250 << QList<int>{32, 100, 100, 50, 38} << -1;
        QTest::newRow("a refused piece stops nothing") << 250 << QList<int>{32, 100, 100, 50, 38} << 1;
        QTest::newRow("a refused opening stops nothing") << 150 << QList<int>{32, 100, 50, 38} << 0;
    }
    void pieces()
    {
        QFETCH(int, length);
        QFETCH(QList<int>, sizes);
        QFETCH(int, refused);
        refusedSend = refused;
        TestFiles::writeFile(QDir(logoFolder()).filePath("logo_80.bin"), bytesOf(length));
        env->fake.setTimeoutAck(-1);
        QString name = QDir(logoFolder()).filePath("logo_80.BIN"); // as the standard set names them
        int16_t result = 1;
        LoghiForm::SaveLogo(name, result);

        QCOMPARE(result, int16_t(0));
        QVERIFY(!QFileInfo::exists(name)); // found in other capitals, not doubled
        QList<int> got;
        for (const QString &p : std::as_const(sent))
            got << int(p.size());
        QCOMPARE(got, sizes);
        QCOMPARE(sent.first(), "AGGIORNAMENTO LOGO GRAFICO....\n\r");
        QCOMPARE(sent.mid(1, sizes.size() - 2).join(QString()).toLatin1(), bytesOf(length));
        QCOMPARE(sent.last(), "AGGIORNAMENTO LOGO GRAFICO TERMINATO\n\r");
        QCOMPARE(env->fake.callsOf("OpenRawChannel").value(0).args, QStringList({"1", "FPEXTENDEDGRAPHIC"}));
        QCOMPARE(env->fake.callsOf("BeginRawTransfer").value(0).args, QStringList({"1", QString::number(70 + length), "0", ""}));
        QCOMPARE(logoCalls().last(), QStringLiteral("CloseRawChannel"));
        // The closing text goes with 10, and 60 stays in force after it.
        QCOMPARE(ackAtPiece.last(), 10);
        QVERIFY(!ackAtPiece.mid(0, ackAtPiece.size() - 1).contains(10));
        QCOMPARE(env->fake.TimeoutAck(), int16_t(60));
        // One turn of the event loop after each whole piece.
        for (int i = 2; i < sizes.size() - 1 && sizes[i - 1] == 100; ++i)
            QVERIFY2(turnBefore[i], qPrintable(QString("no turn before piece %1").arg(i)));
    }

    void resultFromThePrinterState_data()
    {
        QTest::addColumn<QString>("status");
        QTest::addColumn<int>("stateRead");
        QTest::addColumn<int>("result");
        QTest::newRow("fine") << "0010" << 0 << 0;
        QTest::newRow("ESC/POS error") << "0014" << 0 << -1;
        QTest::newRow("graphic error") << "1016" << 0 << -1;
        QTest::newRow("short state") << "014" << 0 << 0;
        QTest::newRow("state unread") << "0014" << 3 << 3;
    }
    void resultFromThePrinterState()
    {
        QFETCH(QString, status);
        QFETCH(int, stateRead);
        QFETCH(int, result);
        env->fake.setProperty("PrinterStatus", status);
        env->fake.queueResult("ReadPrinterInfo", 0); // the firmware read
        env->fake.queueResult("ReadPrinterInfo", int16_t(stateRead));
        QString name = QDir(logoFolder()).filePath("missing.bin");
        int16_t got = 99;
        LoghiForm::SaveLogo(name, got);
        QCOMPARE(int(got), result);
        // A missing file comes into being, empty, and goes as an empty logo.
        QVERIFY(QFileInfo(name).isFile());
        QCOMPARE(QFileInfo(name).size(), 0);
        QCOMPARE(sent.mid(1, sent.size() - 2), QStringList{QString()});
    }

    void roads_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<bool>("busy");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<QStringList>("messages");
        const QStringList raw = {"OpenRawChannel", "BeginRawTransfer", "SendRawData", "SendRawData", "SendRawData",
                                 "CloseRawChannel"};
        QTest::newRow("KX90 firmware 2") << "QN" << "2.10" << false << raw << QStringList();
        QTest::newRow("KX90 II firmware 1") << "QM" << "1.00" << false << raw << QStringList();
        QTest::newRow("KX81") << "QO" << "1.20" << false << raw << QStringList();
        QTest::newRow("KX90 firmware 1: the file") << "QN" << "1.20" << false << QStringList{"LoadLogoFile"} << QStringList();
        QTest::newRow("KX90 too old") << "QN" << "0.90" << false << QStringList()
                                      << QStringList{"Versione del firmware non supportata per i loghi!"};
        QTest::newRow("busy") << "QN" << "2.10" << true << QStringList() << QStringList();
    }
    void roads()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, firmware);
        QFETCH(bool, busy);
        QFETCH(QStringList, calls);
        QFETCH(QStringList, messages);
        setModel(qPrintable(prefix), qPrintable(firmware));
        const QString path = QDir(logoFolder()).filePath("logo.bin");
        TestFiles::writeFile(path, bytesOf(30));
        env->fake.busy = busy;
        QString name = path;
        int16_t result = 1;
        LoghiForm::SaveLogo(name, result);
        QCOMPARE(logoCalls(), calls);
        QCOMPARE(MsgBox::shownTexts(), messages);
        QCOMPARE(result, int16_t(0)); // the state decides, also after the firmware message
        if (calls == QStringList{"LoadLogoFile"})
            QCOMPARE(env->fake.callsOf("LoadLogoFile").value(0).args, QStringList{path});
    }

    void progFlagAndStandardFile_data()
    {
        QTest::addColumn<int>("readResult");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("ending");
        QTest::newRow("80 mm") << 0 << 0 << "04_nataleA_80.BIN";
        QTest::newRow("60 mm") << 0 << 1 << "04_nataleA_60.BIN";
        QTest::newRow("58 mm") << 0 << 2 << "04_nataleA_60.BIN";
        QTest::newRow("unread") << 3 << 1 << "04_nataleA_80.BIN";
    }
    void progFlagAndStandardFile()
    {
        QFETCH(int, readResult);
        QFETCH(int, width);
        QFETCH(QString, ending);
        env->fake.setProperty("ParamValue", QString::number(width));
        env->fake.setDefaultResult("ReadParam", int16_t(readResult));
        QCOMPARE(StandardLogoFile(4), QDir(env->folder.path()).filePath("LoghiStandard/" + ending));
        QCOMPARE(env->fake.callsOf("ReadParam").value(0).args, QStringList{"12"});
        QCOMPARE(StandardLogoFile(5).section('/', -1), ending.replace("04_nataleA_", "05_NataleB_"));
        QCOMPARE(StandardLogoFile(1).section('/', -1), ending.right(6)); // outside the set: no prefix

        // ProgFlag: skipped while busy, a refusal reported and not told to the caller.
        int16_t number = 9, value = 3;
        env->fake.busy = true;
        LoghiForm::ProgFlag(number, value);
        env->fake.busy = false;
        env->fake.queueResult("WriteParam", 2);
        LoghiForm::ProgFlag(number, value);
        QCOMPARE(env->fake.sent(u',', "WriteParam"), QStringList{"WriteParam(9,3)"});
        QCOMPARE(MsgBox::shownTexts().size(), 1);
    }

    void pictures()
    {
        writePicture("05_b.bmp", Qt::red);
        writePicture("02_a.bmp", Qt::blue);
        TestFiles::writeFile(QDir(logoFolder()).filePath("07_broken.bmp"), "not a picture");
        TestFiles::writeFile(QDir(logoFolder()).filePath("02_a_80.bin"), "eighty");
        LoghiForm form;
        QCOMPARE(form.txtPath->text(), "I loghi standard sono nella cartella " + QDir::toNativeSeparators(logoFolder()));
        QCOMPARE(form.ImageList1.tags, QStringList({"02", "05", "07"}));
        // The broken picture shows the one before it, and keeps its own number.
        QCOMPARE(form.ImageList1.images[2].toImage(), form.ImageList1.images[1].toImage());
        QCOMPARE(form.ListViewHeader->count(), 3);
        QCOMPARE(form.ListViewFooter->currentRow(), 0);
        QCOMPARE(form.headerFile + form.footerFile, QString());
        QVERIFY(!form.ListViewHeader->isEnabled() && !form.ListViewFooter->isEnabled());
        QCOMPARE(form.ComboLarg->currentText(), "80 mm");

        // Unticking forgets the choice.
        form.show();
        form.chkHeader->setChecked(true);
        QListWidget *list = form.ListViewHeader;
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
        QCOMPARE(form.headerFile, QDir(logoFolder()).filePath("05_b.bmp"));
        QVERIFY(!form.PictureHeader->pixmap().isNull());
        form.chkHeader->setChecked(false);
        QCOMPARE(form.headerFile, QString());
        QVERIFY(form.PictureHeader->pixmap().isNull());

        // A first picture that cannot be loaded ends the run.
        TestFiles::writeFile(QDir(logoFolder()).filePath("01_bad.bmp"), "not a picture");
        QVERIFY_THROWS_EXCEPTION(RunTimeError, LoghiForm());
    }

    void applyStandard_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("fileSent");
        QTest::newRow("KX90 80 mm") << "QN" << 0 << "05_b_80.bin";
        QTest::newRow("KX90 II 58 mm") << "QM" << 2 << "05_b_60.bin";
        QTest::newRow("KX81") << "QO" << 1 << "KX81_loghi.tlg";
    }
    void applyStandard()
    {
        QFETCH(QString, prefix);
        QFETCH(int, width);
        QFETCH(QString, fileSent);
        setModel(qPrintable(prefix));
        writePicture("02_a.bmp", Qt::blue);
        writePicture("05_b.bmp", Qt::red);
        TestFiles::writeFile(QDir(logoFolder()).filePath(fileSent), bytesOf(120));
        LoghiForm form;
        form.show();
        form.chkHeader->setChecked(true);
        form.chkFooter->setChecked(true);
        form.ComboLarg->setCurrentIndex(width);
        form.ListViewHeader->setCurrentRow(1);
        form.LogoClick(form.ListViewHeader);

        // The footer box is ticked but nothing chosen: the footer is left alone.
        form.btnSave->click();
        QCOMPARE(form.headerFile, QDir(logoFolder()).filePath(fileSent));
        QCOMPARE(sent.mid(1, 2).join(QString()).toLatin1(), bytesOf(120));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione intestazione scontrino ok!"});
        QCOMPARE(env->fake.sent(u',', "WriteParam"), QStringList{"WriteParam(9,5)"});

        // A second APPLICA: on a KX90 the name no longer names a file; the
        // number is written all the same after the failure.
        env->fake.clearCalls();
        MsgBox::clearShown();
        env->fake.setProperty("PrinterStatus", "0014");
        form.btnSave->click();
        if (prefix == "QO")
            QCOMPARE(form.headerFile, QDir(logoFolder()).filePath(fileSent));
        else
            QCOMPARE(form.headerFile, QDir(logoFolder()).filePath(fileSent.left(fileSent.size() - 4) + fileSent.right(7)));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione logo non riuscita!"});
        QCOMPARE(env->fake.count("CloseRawChannel"), 2);
        QCOMPARE(env->fake.sent(u',', "WriteParam"), QStringList{"WriteParam(9,5)"});

        // Unticked boxes clear both numbers and send nothing.
        env->fake.clearCalls();
        form.chkHeader->setChecked(false);
        form.chkFooter->setChecked(false);
        form.btnSave->click();
        QCOMPARE(logoCalls(), QStringList({"WriteParam", "WriteParam"}));
        QCOMPARE(env->fake.sent(u',', "WriteParam"), QStringList({"WriteParam(9,0)", "WriteParam(10,0)"}));
    }

    void applyPersonal_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("firstFilter");
        QTest::newRow("KX90") << "QN" << "File di immagine KX90 (*.bin)";
        QTest::newRow("KX90 II") << "QM" << "File di immagine KX90II, KX81 (*.tlg)";
        QTest::newRow("KX81") << "QO" << "File di immagine KX90II, KX81 (*.tlg)";
    }
    void applyPersonal()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, firstFilter);
        setModel(qPrintable(prefix));
        const QString path = QDir(logoFolder()).filePath("mine.bin");
        TestFiles::writeFile(path, bytesOf(10));
        LoghiPersForm form;
        QCOMPARE(form.txtIndexImg->text() + form.comboPos->currentText() + form.txtFileName->text(), "0Testa");

        FileDialog::queueAnswer(path);
        form.btnImg->click();
        FileDialog::queueAnswer(std::nullopt);
        form.btnImg->click(); // a cancel keeps the path
        QCOMPARE(form.txtFileName->text(), path);
        QCOMPARE(FileDialog::asked().value(0).filter.section(";;", 0, 0), "Tutti i file (*.*)");
        QCOMPARE(FileDialog::asked().value(0).filter.split(";;").size(), 3);
        QCOMPARE(FileDialog::asked().value(0).selectedFilter, firstFilter);

        form.txtIndexImg->setText("12");
        form.comboPos->setCurrentText("Entrambe");
        form.btnSave->click();
        QCOMPARE(env->fake.count("BeginRawTransfer"), 2);
        QCOMPARE(env->fake.sent(u',', "WriteParam"), QStringList({"WriteParam(9,12)", "WriteParam(10,12)"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList({"Programmazione intestazione scontrino ok!",
                                                    "Programmazione fine scontrino ok!"}));

        // A failure leaves the number alone and closes the channel again.
        env->fake.clearCalls();
        MsgBox::clearShown();
        env->fake.setProperty("PrinterStatus", "0014");
        form.comboPos->setCurrentText("Coda");
        form.btnSave->click();
        QCOMPARE(env->fake.sent(u',', "WriteParam"), QStringList());
        QCOMPARE(env->fake.count("CloseRawChannel"), 2);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione logo non riuscita!"});

        form.txtIndexImg->setText("x");
        env->fake.setProperty("PrinterStatus", "0010");
        QVERIFY_THROWS_EXCEPTION(RunTimeError, form.btnSave_Click());
    }

    void installStep_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<bool>("clearOffered");
        QTest::newRow("KX90") << "QN" << true;
        QTest::newRow("KX81") << "QO" << false;
    }
    void installStep()
    {
        QFETCH(QString, prefix);
        QFETCH(bool, clearOffered);
        setModel(qPrintable(prefix));
        InstallLogoForm::StandaloneMode = false;
        InstallLogoForm form;
        QCOMPARE(!form.btnDelLoghi->isHidden(), clearOffered);
        QVERIFY(!form.btnLogoStd->isEnabled() && !form.btnLogoPers->isEnabled());
        form.chkLogo->setChecked(true);
        QVERIFY(form.btnLogoStd->isEnabled() && form.btnLogoPers->isEnabled());

        // Alone (in the chain: tst_commissioningchain) it leaves and sends nothing.
        InstallLogoForm::StandaloneMode = true;
        ProgForm::WizardMode = false;
        InstallLogoForm alone;
        QCOMPARE(alone.btnNext->text(), "ESCI");
        alone.btnNext->click();
        QVERIFY(!ProgForm::WizardMode);
        QVERIFY(logoCalls().isEmpty()); // leaving sends nothing
        InstallLogoForm::StandaloneMode = false;
    }

    void clearMemory()
    {
        InstallLogoForm form;
        MsgBox::queueAnswer(QMessageBox::No);
        form.btnDelLoghi->click();
        QCOMPARE(logoCalls(), QStringList());

        MsgBox::queueAnswer(QMessageBox::Yes);
        form.btnDelLoghi->click();
        QCOMPARE(env->fake.callsOf("BeginRawTransfer").value(0).args, QStringList({"1", "64", "0", ""}));
        QCOMPARE(sent.join(QString()).toLatin1().toHex(' '),
                 QByteArray("CANCELLAZIONE AREA LOGHI...\n\r").toHex(' ')
                     + " 1d 28 45 03 00 01 49 4e 1d 28 45 04 00 05 02 02 00 1d 28 45 04 00 05 02 07 00"
                       " 1d 28 45 04 00 02 4f 55 54");
        const auto done = MsgBox::shown().last();
        QCOMPARE(QStringList({done.text, done.title}),
                 QStringList({"Pulizia memoria loghi grafici completata!", MsgBox::applicationTitle()}));
        QCOMPARE(done.icon, QMessageBox::Information);
    }
};

QTEST_MAIN(TestLogoForms)
#include "tst_logoforms.moc"
