#include "inquirysaveform.h"
#include "namedcontrols.h"
#include "testmain.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

class InquirySaveFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { delete m_form; }
    void namesAreTrimmedAndEmptyOnesRefused();
    void takenNameKeepsItOpen();
    void goesWhenAcceptedOrGivenUp_data();
    void goesWhenAcceptedOrGivenUp();

private:
    QLineEdit *name() const { return m_form->findChild<QLineEdit *>(QStringLiteral("name")); }
    QString refusal() const { return m_form->findChild<QLabel *>(QStringLiteral("refusal"))->text(); }

    QPointer<InquirySaveForm> m_form;
};

void InquirySaveFormTest::init()
{
    m_form = new InquirySaveForm;
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
}

void InquirySaveFormTest::namesAreTrimmedAndEmptyOnesRefused()
{
    QSignalSpy names(m_form.data(), &InquirySaveForm::setText);
    QVERIFY(name()->hasFocus());
    QCOMPARE(unnamedControl(*m_form), QString());
    QTest::keyClicks(name(), QStringLiteral("  "));
    QTest::keyClick(name(), Qt::Key_Return);
    QVERIFY(names.isEmpty());
    QVERIFY(!refusal().isEmpty());
    QTest::keyClicks(name(), QStringLiteral(" CT of today "));
    QVERIFY(refusal().isEmpty());
    QTest::keyClick(name(), Qt::Key_Return);
    QCOMPARE(names.size(), 1);
    QCOMPARE(names.at(0).at(0).toString(), QStringLiteral("CT of today"));
    QVERIFY(m_form->isVisible());
}

void InquirySaveFormTest::takenNameKeepsItOpen()
{
    connect(m_form, &InquirySaveForm::setText, m_form,
        [this] { m_form->onSameInquiryName(QStringLiteral("the name is exist")); });
    name()->setText(QStringLiteral("taken"));
    QTest::keyClick(name(), Qt::Key_Enter);
    QVERIFY(m_form->isVisible());
    QCOMPARE(refusal(), QStringLiteral("the name is exist"));
    QCOMPARE(name()->selectedText(), QStringLiteral("taken"));
}

void InquirySaveFormTest::goesWhenAcceptedOrGivenUp_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("names");
    QTest::newRow("accepted") << int(Qt::Key_Return) << 1;
    QTest::newRow("given up") << int(Qt::Key_Escape) << 0;
}

void InquirySaveFormTest::goesWhenAcceptedOrGivenUp()
{
    QFETCH(int, key);
    QSignalSpy names(m_form.data(), &InquirySaveForm::setText);
    connect(m_form, &InquirySaveForm::setText, m_form, [this] { m_form->onSameInquiryName(QString()); });
    name()->setText(QStringLiteral("free"));
    QTest::keyClick(name(), Qt::Key(key));
    QTRY_VERIFY(!m_form);
    QTEST(names.size(), "names");
}

PM_TEST_MAIN(InquirySaveFormTest)
#include "tst_inquirysaveform.moc"
