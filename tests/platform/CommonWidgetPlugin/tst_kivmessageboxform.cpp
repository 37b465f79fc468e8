#include "kivmessageboxform.h"
#include "testmain.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QtTest>

using Box = kivMessageBoxForm;

namespace {

QPushButton *button(const QWidget *box, const QString &text)
{
    for (QPushButton *candidate : box->findChildren<QPushButton *>()) {
        if (candidate->text().remove(QLatin1Char('&')) == text) {
            return candidate;
        }
    }
    return nullptr;
}

/// What a user does to the box that is on screen.
void act(const QString &action)
{
    QWidget *box = QApplication::activeModalWidget();
    if (action == QLatin1String("return")) {
        QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key_Return);
    } else if (action == QLatin1String("escape")) {
        QTest::keyClick(box, Qt::Key_Escape);
    } else if (action == QLatin1String("close")) {
        box->close();
    } else {
        QTest::mouseClick(button(box, action), Qt::LeftButton);
    }
}

} // namespace

class KivMessageBoxFormTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Box::setAnswerer({}); }

    void answers_data()
    {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("defaultButton");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("answer");
        const auto row = [](const char *name, int buttons, int defaultButton, const char *action,
                             int answer) {
            QTest::newRow(name) << buttons << defaultButton << QString::fromLatin1(action) << answer;
        };
        row("OK clicked", 3, 1, "OK", 1);
        row("Cancel clicked", 3, 1, "Cancel", 2);
        row("Return, OK is default", 3, 1, "return", 1);
        row("Return, Cancel is default", 3, 2, "return", 2);
        row("Return, OK alone", 1, 1, "return", 1);
        row("Escape with Cancel", 3, 1, "escape", 2);
        row("Escape without Cancel", 1, 1, "escape", 1);
        row("closed with Cancel", 3, 1, "close", 2);
        row("closed without Cancel", 1, 1, "close", 1);
    }

    void answers()
    {
        QFETCH(int, buttons);
        QFETCH(int, defaultButton);
        QFETCH(QString, action);
        QTimer::singleShot(0, qApp, [action] { act(action); });
        QTEST(
            Box::question(nullptr, QStringLiteral("发送"), QStringLiteral("Really?"), buttons, defaultButton),
            "answer");
    }

    void answererStandsInForEveryKind()
    {
        QList<Box::Request> asked;
        Box::setAnswerer([&asked](const Box::Request &request) {
            asked.append(request);
            return 2;
        });
        const QString title = QStringLiteral("Title");
        const QString text = QStringLiteral("Text");
        QCOMPARE(Box::information(nullptr, title, text, 1, 1), 2);
        QCOMPARE(Box::warning(nullptr, title, text, 1, 1), 2);
        QCOMPARE(Box::question(nullptr, title, text, 3, 2), 2);
        QCOMPARE(asked.size(), 3);
        QVERIFY(asked.at(0).kind == Box::Kind::Information);
        QVERIFY(asked.at(1).kind == Box::Kind::Warning);
        QVERIFY(asked.at(2).kind == Box::Kind::Question);
        QCOMPARE(asked.at(2).title, title);
        QCOMPARE(asked.at(2).text, text);
        QCOMPARE(asked.at(2).buttons, 3);
        QCOMPARE(asked.at(2).defaultButton, 2);
    }

    void longTextStaysOnScreen()
    {
        Box::Request request;
        request.text = QStringLiteral("A database can say a great deal about a statement. ").repeated(200);
        Box box(request);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        const QSize screen = box.screen()->availableSize();
        QVERIFY(box.width() < screen.width());
        QVERIFY(box.height() < screen.height());
        QVERIFY(button(&box, QStringLiteral("OK"))->isVisible());
    }

    void textIsPlain()
    {
        Box::Request request;
        request.text = QStringLiteral("<b>Doe^John</b>");
        const Box box(request);
        const auto *text = box.findChild<QLabel *>(QStringLiteral("text"));
        QCOMPARE(text->textFormat(), Qt::PlainText);
        QVERIFY(text->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    }
};

PM_TEST_MAIN(KivMessageBoxFormTest)
#include "tst_kivmessageboxform.moc"
