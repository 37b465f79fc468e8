#include "columncaptions.h"
#include "configlocation.h"
#include "patientqueryform.h"
#include "swimconfig.h"
#include "testmain.h"
#include "uilanguage.h"
#include "uploadstatus.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

struct Text
{
    QString context;
    QString source;
    QStringList translations; ///< one, or one a plural form
    bool isFinished = true;
};

QVector<Text> textsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no %s", qPrintable(path));
    }
    QXmlStreamReader xml(&file);
    QVector<Text> texts;
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            texts.append({context, xml.readElementText(), {}, true});
        } else if (xml.name() == QLatin1String("translation")) {
            texts.last().isFinished = !xml.attributes().hasAttribute(QLatin1String("type"));
            const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            texts.last().translations = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        }
    }
    return texts;
}

QStringList found(const QString &text, const QString &pattern)
{
    QStringList all;
    for (auto match = QRegularExpression(pattern).globalMatch(text); match.hasNext();) {
        all.append(match.next().captured());
    }
    all.sort();
    all.removeDuplicates();
    return all;
}

bool isChinese(const QString &text)
{
    return text.contains(QRegularExpression(QStringLiteral("[\\x{4e00}-\\x{9fff}]")));
}

const QStringList floors{
    QStringLiteral("platform"), QStringLiteral("patientmanager"), QStringLiteral("workstation")};

QString fileOf(const QString &floor, const QString &language)
{
    return QStringLiteral(PM_SOURCE_DIR "/%1/translations/%1_%2.ts").arg(floor, language);
}

} // namespace

class TranslationsTest : public QObject
{
    Q_OBJECT

private slots:
    void everySourceTextIsThere()
    {
        const QTemporaryDir folder;
        for (const QString &floor : floors) {
            const QString copy = folder.filePath(floor + QStringLiteral(".ts"));
            QVERIFY(QFile::copy(fileOf(floor, QStringLiteral("zh_CN")), copy));
            QProcess update;
            update.start(QStringLiteral(PM_LUPDATE),
                {QStringLiteral("-silent"), QStringLiteral("-no-obsolete"),
                    QStringLiteral(PM_SOURCE_DIR "/") + floor, QStringLiteral("-ts"), copy});
            QVERIFY(update.waitForFinished() && update.exitCode() == 0);
            for (const Text &text : textsOf(copy)) {
                const bool isThere = text.isFinished && !text.translations.isEmpty();
                QVERIFY2(isThere, qPrintable(text.context + QStringLiteral(": ") + text.source));
            }
        }
    }

    void whatIsTranslatedKeepsItsPlaces()
    {
        const QString places = QStringLiteral("%L?n|%L?\\d|\\{\\w+\\}");
        for (const QString &floor : floors) {
            for (const char *language : {"zh_CN", "en"}) {
                for (const Text &text : textsOf(fileOf(floor, QLatin1String(language)))) {
                    const QString all = text.translations.join(QLatin1Char('\n'));
                    QVERIFY2(found(text.source, places) == found(all, places), qPrintable(text.source));
                    const bool hasLetter = !QKeySequence::mnemonic(text.source).isEmpty();
                    QVERIFY2(hasLetter == !QKeySequence::mnemonic(all).isEmpty(), qPrintable(text.source));
                }
            }
        }
    }

    void storedTextsAndSqlStayAsTheyAre()
    {
        const QRegularExpression sql(
            QStringLiteral("(=|LIKE|IN) *\\(?'%\\d|^(SELECT|UPDATE|DELETE|INSERT) "));
        const QStringList states{
            UploadStatus::notUploaded(), UploadStatus::uploading(), UploadStatus::uploaded()};
        int statements = 0;
        for (const QString &floor : floors) {
            for (const char *language : {"zh_CN", "en"}) {
                for (const Text &text : textsOf(fileOf(floor, QLatin1String(language)))) {
                    QVERIFY2(!states.contains(text.source), qPrintable(text.source));
                    if (text.source.contains(sql)) {
                        ++statements;
                        QCOMPARE(text.translations, QStringList{text.source});
                    }
                }
            }
        }
        QVERIFY(statements > 0);
    }

    void everyChineseSourceHasEnglish()
    {
        for (const QString &floor : floors) {
            QStringList english;
            for (const Text &text : textsOf(fileOf(floor, QStringLiteral("en")))) {
                QVERIFY2(text.isFinished && !isChinese(text.translations.join(QString())),
                    qPrintable(text.source));
                english.append(text.context + text.source);
            }
            for (const Text &text : textsOf(fileOf(floor, QStringLiteral("zh_CN")))) {
                QVERIFY2(!isChinese(text.source) || english.contains(text.context + text.source),
                    qPrintable(text.source));
            }
        }
    }

    void speaksInAllFloorsAndInQt()
    {
        ConfigLocation::setBase(QStringLiteral(PM_SOURCE_DIR));
        UiLanguage language;
        language.speak(QStringLiteral("zh_CN"));
        QCOMPARE(swimconfig::instance()->windowTitle(), QStringLiteral("设置"));
        QCOMPARE(PatientQueryForm().windowTitle(), QStringLiteral("窗体"));
        QCOMPARE(QCoreApplication::translate("ActionMenus", "&File"), QStringLiteral("文件(&F)"));
        QCOMPARE(ColumnCaptions::of(QStringLiteral("patient")).value(QStringLiteral("PatientID")),
            QStringLiteral("患者编号"));
        QVERIFY(
            isChinese(QDialogButtonBox(QDialogButtonBox::Cancel).button(QDialogButtonBox::Cancel)->text()));
        language.speak(QStringLiteral("en"));
        QCOMPARE(QCoreApplication::translate("LauncherSettings", "图像对比"), QStringLiteral("Comparison"));
        QCOMPARE(ColumnCaptions::of(QStringLiteral("patient")).value(QStringLiteral("PatientID")),
            QStringLiteral("Patient ID"));
        ConfigLocation::setBase({});
    }
};

PM_TEST_MAIN(TranslationsTest)
#include "tst_translations.moc"
