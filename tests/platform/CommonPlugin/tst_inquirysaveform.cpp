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
    void init()
    {
        m_form = new InquirySaveForm;
        m_form->show();
        m_form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_form));
    }

    void cleanup() { delete m_form; }

    void namesAreTrimmedAndEmptyOnesRefused()
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
        QVERIFY(m_form->isVisible()); // until it hears whether the name is taken
        QTest::keyClick(name(), Qt::Key_Escape);
        QTRY_VERIFY(!m_form);
    }

private:
    QLineEdit *name() const { return m_form->findChild<QLineEdit *>(QStringLiteral("name")); }
    QString refusal() const { return m_form->findChild<QLabel *>(QStringLiteral("refusal"))->text(); }

    QPointer<InquirySaveForm> m_form;
};

PM_TEST_MAIN(InquirySaveFormTest)
#include "tst_inquirysaveform.moc"
