// The serial number names files (the per-printer programming, the journal
// and declaration files): whatever the printer answers, what GetMatricola
// gives can never leave the program's folder or hold a control character.
#include "FakeFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"

#include <QtTest>

class TestMatricolaFileName : public QObject
{
    Q_OBJECT
    FakeFPControl fake;

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
    }

    void unsafeNumbersGiveNoName_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("matricola"); // empty: refused
        QTest::newRow("plain") << "QN" << "04" << "QN04000042";
        QTest::newRow("slash") << "Q/" << "04" << "";
        QTest::newRow("parent") << ".." << "/." << "";
        QTest::newRow("backslash") << "Q\\" << "04" << "";
        QTest::newRow("dots alone stay inside the folder") << ".." << ".." << "....000042";
        QTest::newRow("NUL") << QString(QChar(0)) + "N" << "04" << "";
        QTest::newRow("tab") << "Q\t" << "04" << "";
        QTest::newRow("DEL") << "Q\x7f" << "04" << "";
        QTest::newRow("C1 control") << QString("Q") + QChar(0x81) << "04" << "";
        QTest::newRow("NEL") << QString("Q") + QChar(0x85) << "04" << "";
        QTest::newRow("colon") << "Q:" << "04" << "";
        QTest::newRow("wildcard") << "Q*" << "04" << "";
        QTest::newRow("accented letter is a letter") << QString("Q") + QChar(0xE8) << "04"
                                                      << QString("Q") + QChar(0xE8) + "04000042";
    }

    void unsafeNumbersGiveNoName()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, model);
        QFETCH(QString, matricola);
        fake.setProperty("MatricolaPrefix", prefix);
        fake.setProperty("MatricolaModel", model);
        fake.setProperty("MatricolaNumber", "42");
        QCOMPARE(GetMatricola(), matricola);
    }
};

QTEST_GUILESS_MAIN(TestMatricolaFileName)
#include "tst_matricolafilename.moc"
