// SPDX-License-Identifier: GPL-3.0-or-later
// Declarations and booklet through a CUPS scheduler of the test's own
// (support/private-cups.sh) onto CUPS-PDF queues picked in comboPrn.
#include "FormTestEnv.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "printer/SharedState.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QString kA4 = QStringLiteral("Fiscorda_A4");
const QString kLetter = QStringLiteral("Fiscorda_Letter");
const QString kStops = QStringLiteral("Fiscorda_Ferma");
const QString kSent = QStringLiteral("Stampa in corso... verificare che non ci siano problemi.");
constexpr int kJobTimeoutMs = 60000; // Ghostscript on a loaded machine

QString run(const QString &program, const QStringList &args, int *exitCode = nullptr)
{
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    // The tools' answers are read as words ("disabled"): in English, whatever
    // the locale the tests run under.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    p.setProcessEnvironment(env);
    p.start(program, args);
    const bool done = p.waitForFinished(60000);
    if (exitCode)
        *exitCode = done && p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    return QString::fromLocal8Bit(p.readAll()).trimmed();
}

// The technician's pick: the entry chosen in the list, as a click does.
void pick(PrintFoglioForm &form, const QString &device)
{
    const int i = form.comboPrn->findText(device);
    QVERIFY2(i >= 0, qPrintable(device + " not offered"));
    form.comboPrn->setCurrentIndex(i);
}

}

class TestCupsPrinting : public QObject
{
    Q_OBJECT
    QTemporaryDir cups;
    bool started = false;
    std::optional<FormTestEnv> env;

    QStringList jobsIn(const QString &folder) const
    {
        return QDir(cups.filePath(folder)).entryList({"job-*.pdf"}, QDir::Files, QDir::Name);
    }
    // Waits for one more PDF in the folder than before; its pdfinfo.
    QString nextJob(const QString &folder, int before)
    {
        QElapsedTimer clock;
        clock.start();
        while (jobsIn(folder).size() <= before && !clock.hasExpired(kJobTimeoutMs))
            QTest::qWait(100);
        const QStringList jobs = jobsIn(folder);
        if (jobs.size() <= before)
            return QStringLiteral("no job came out; scheduler log:\n")
                   + run("tail", {"-5", cups.filePath("log/error_log")});
        return run("pdfinfo", {QDir(cups.filePath(folder)).filePath(jobs.last())});
    }
    static int pages(const QString &info)
    {
        const auto m = QRegularExpression("^Pages:\\s+(\\d+)", QRegularExpression::MultilineOption).match(info);
        return m.hasMatch() ? m.captured(1).toInt() : -1;
    }
    static bool isA4(const QString &info)
    {
        return QRegularExpression("^Page size:\\s+595(\\.\\d+)? x 842(\\.\\d+)? pts",
                                  QRegularExpression::MultilineOption)
            .match(info)
            .hasMatch();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(cups.isValid());
        int code = 0;
        const QString out = run(QStringLiteral(FISCORDA_TEST_SUPPORT_DIR "/private-cups.sh"), {"start", cups.path()}, &code);
        if (code != 0)
            QSKIP(qPrintable("no CUPS scheduler of the test's own could be started: " + out));
        started = true;
        // Before anything asks CUPS: the client library then talks to this
        // scheduler only.
        qputenv("CUPS_SERVER", out.section('\n', -1).toLocal8Bit());
    }
    void cleanupTestCase()
    {
        if (started)
            run(QStringLiteral(FISCORDA_TEST_SUPPORT_DIR "/private-cups.sh"), {"stop", cups.path()});
    }
    void init()
    {
        env.emplace();
        env->fake.setMatricola("QN", "41", "123");
        env->fake.setProperty("Azzeramenti", "7");
        gNome = QStringLiteral("Niccolò Rossi");
        gRagioneSociale = QStringList{"bar sport"};
    }
    void cleanup() { env.reset(); }

    void onlyA4QueuesAreOffered()
    {
        PrintFoglioForm::PrintMode = 1;
        PrintFoglioForm form;
        QStringList offered;
        for (int i = 0; i < form.comboPrn->count(); ++i)
            offered << form.comboPrn->itemText(i);
        QVERIFY2(offered.contains(kA4) && offered.contains(kStops), qPrintable(offered.join(", ")));
        QVERIFY2(!offered.contains(kLetter), qPrintable(offered.join(", ")));
        QCOMPARE(offered.last(), SystemPrinters::kPdfDevice);
    }

    void jobComesOutAsA4Pdf_data()
    {
        QTest::addColumn<int>("mode"); // 0: the booklet's reminder
        QTest::addColumn<QString>("copies");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("commissioning declaration") << 1 << "1" << 1 << QStringList{kSent};
        QTest::newRow("decommissioning declaration, two copies") << 2 << "2" << 2 << QStringList{kSent};
        QTest::newRow("booklet") << 0 << "" << 1 << QStringList{};
    }
    void jobComesOutAsA4Pdf()
    {
        QFETCH(int, mode);
        QFETCH(QString, copies);
        const int before = jobsIn("out").size();
        if (mode == 0) {
            InstallLibrettoFiscaleForm booklet;
            booklet.show();
            whenModal("PrintFoglioForm", [](QWidget *w) {
                auto *choice = static_cast<PrintFoglioForm *>(w);
                pick(*choice, kA4);
                choice->btnOK->click(); // "APPLICA"
            });
            booklet.btnPrint->click();
        } else {
            PrintFoglioForm::PrintMode = int16_t(mode);
            PrintFoglioForm form;
            QCOMPARE(form.txtNCopie->text(), copies);
            pick(form, kA4);
            form.btnPrint->click();
        }
        QTEST(MsgBox::shownTexts(), "messages");
        const QString info = nextJob("out", before);
        QVERIFY2(isA4(info), qPrintable(info));
        QTEST(pages(info), "pages");
    }

    void queueThatStopsKeepsTheJob()
    {
        const QString stop = cups.filePath("out-ferma/stop");
        QFile(stop).open(QIODevice::WriteOnly);
        PrintFoglioForm::PrintMode = 1;
        PrintFoglioForm form;
        pick(form, kStops);
        form.btnPrint->click();
        // The spooler took the job; the program does not wait for the paper.
        QCOMPARE(MsgBox::shownTexts(), QStringList{kSent});
        QTRY_VERIFY_WITH_TIMEOUT(run("lpstat", {"-p", kStops}).contains("disabled"), kJobTimeoutMs);
        QVERIFY2(run("lpstat", {"-o", kStops}).startsWith(kStops + "-"), "the job was lost");
        QVERIFY(jobsIn("out-ferma").isEmpty());

        QFile::remove(stop);
        int code = 0;
        const QString out = run("cupsenable", {kStops}, &code);
        QVERIFY2(code == 0, qPrintable(out));
        const QString info = nextJob("out-ferma", 0);
        QVERIFY2(isA4(info), qPrintable(info));
        QCOMPARE(pages(info), 1);
        QVERIFY(form.btnOK->isEnabled());
    }
};

QTEST_MAIN(TestCupsPrinting)
#include "tst_cupsprinting.moc"
