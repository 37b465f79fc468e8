#include "configlocation.h"
#include "importscene.h"
#include "messageanswers.h"
#include "selecthideform.h"
#include "testfiles.h"
#include "testmain.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

namespace {

/// Opens the form and reaches into the page of one table.
class Page
{
public:
    explicit Page(const QString &table, int page = 0)
        : form(new selectHideForm(nullptr, page))
        , m_page(form->findChild<QWidget *>(table))
    { }
    ~Page() { delete form.data(); }

    QTreeWidget *list() const { return m_page->findChild<QTreeWidget *>(); }
    QTreeWidgetItem *item(const QString &column) const
    {
        return list()->findItems(column, Qt::MatchExactly, 1).value(0);
    }
    void click(const char *button) const { m_page->findChild<QPushButton *>(QLatin1String(button))->click(); }
    QLineEdit *filter() const { return m_page->findChild<QLineEdit *>(); }

    QPointer<selectHideForm> form;

private:
    QWidget *m_page;
};

/// Row 0 of a configuration table, as the record forms read it.
QList<int> flags(const QString &userTable)
{
    QSqlQuery query(QStringLiteral("SELECT * FROM ") + userTable);
    QList<int> values;
    if (query.next()) {
        for (int i = 0; i < query.record().count(); ++i) {
            values.append(query.value(i).toInt());
        }
    }
    return values;
}

const QString study = QStringLiteral("generalstudy");
const QString studyUser = QStringLiteral("generalstudyuser");

} // namespace

class SelectHideFormTest : public QObject
{
    Q_OBJECT

private slots:
    void checkBoxWritesItsFlagAlone()
    {
        const ImportScene scene;
        const Page page(study);
        QSignalSpy changed(page.form.data(), &selectHideForm::updateFieldHeader);
        QList<int> expected = flags(studyUser);
        QTreeWidgetItem *item = page.item(QStringLiteral("StudyDate"));
        QCOMPARE(item->checkState(0), Qt::Checked);
        item->setCheckState(0, Qt::Unchecked);
        expected[4] = 0;
        QCOMPARE(flags(studyUser), expected);
        QCOMPARE(changed.size(), 1);
    }

    void buttonsSetThePageAlone()
    {
        const ImportScene scene;
        const QList<int> original = flags(studyUser);
        const QList<int> patients = flags(QStringLiteral("patientuser"));
        const Page page(study);
        QSignalSpy changed(page.form.data(), &selectHideForm::updateFieldHeader);
        page.click("none");
        QCOMPARE(flags(studyUser).count(0), original.size());
        QCOMPARE(page.item(QStringLiteral("StudyDate"))->checkState(0), Qt::Unchecked);
        page.click("all");
        QCOMPARE(flags(studyUser).count(1), original.size());
        page.click("defaults");
        QCOMPARE(flags(studyUser), original);
        QCOMPARE(page.item(QStringLiteral("StudyDate"))->checkState(0), Qt::Checked);
        QCOMPARE(page.item(QStringLiteral("pk"))->checkState(0), Qt::Unchecked);
        QCOMPARE(changed.size(), 3);
        QCOMPARE(flags(QStringLiteral("patientuser")), patients);
    }

    void everyPageFitsItsTable_data()
    {
        QTest::addColumn<QString>("table");
        for (const char *table : {"patient", "generalstudy", "generalseries", "imageformat"}) {
            QTest::newRow(table) << QString::fromLatin1(table);
        }
    }

    void everyPageFitsItsTable()
    {
        QFETCH(QString, table);
        const ImportScene scene;
        const Page page(table);
        const QSqlRecord record = scene.index.database().record(table);
        QCOMPARE(page.list()->topLevelItemCount(), record.count());
        const int last = record.count() - 1;
        QCOMPARE(page.list()->topLevelItem(last)->text(1), record.fieldName(last));
        page.click("all");
        page.list()->topLevelItem(last)->setCheckState(0, Qt::Unchecked);
        const QList<int> written = flags(table + QStringLiteral("user"));
        QCOMPARE(written.count(1), last);
        QCOMPARE(written.last(), 0);
    }

    void captionsComeFromTheRenameFile()
    {
        const ImportScene scene;
        writeFile(ConfigLocation::aboveProgram(QLatin1String(ConfigKey::renameIni)),
            "[generalstudy]\nStudyDate=Study date\n");
        const Page page(study);
        QCOMPARE(page.item(QStringLiteral("StudyDate"))->text(0), QStringLiteral("Study date"));
        QCOMPARE(page.item(QStringLiteral("StudyID"))->text(0), QStringLiteral("StudyID"));
    }

    void filterFindsCaptionAndName()
    {
        const ImportScene scene;
        const Page page(study);
        // The clear button fades in and out; an animation left over at the end would be nobody's to delete.
        const auto *clearButton = page.filter()->findChild<QAbstractButton *>();
        page.filter()->setText(QStringLiteral("studyda"));
        QTRY_COMPARE(clearButton->property("opacity").toReal(), 1.0);
        QVERIFY(!page.item(QStringLiteral("StudyDate"))->isHidden());
        QVERIFY(page.item(QStringLiteral("AccessionNumber"))->isHidden());
        page.filter()->clear();
        QVERIFY(!page.item(QStringLiteral("AccessionNumber"))->isHidden());
        QTRY_COMPARE(clearButton->property("opacity").toReal(), 0.0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void missingRowIsMade()
    {
        const ImportScene scene;
        scene.index.query(QStringLiteral("DELETE FROM generalstudyuser"));
        const Page page(study);
        page.item(QStringLiteral("StudyDate"))->setCheckState(0, Qt::Checked);
        const QList<int> written = flags(studyUser);
        QCOMPARE(written.count(1), 1);
        QCOMPARE(written.value(4), 1);
        QCOMPARE(scene.index.count("generalstudyuser"), 1);
    }

    void refusedWriteShowsWhatIsThere()
    {
        const ImportScene scene;
        const MessageAnswers warnings;
        const Page page(study);
        QSignalSpy changed(page.form.data(), &selectHideForm::updateFieldHeader);
        scene.index.query(QStringLiteral("PRAGMA query_only = ON"));
        QTreeWidgetItem *item = page.item(QStringLiteral("StudyDate"));
        item->setCheckState(0, Qt::Unchecked);
        QCOMPARE(warnings.count(), 1);
        QCOMPARE(changed.size(), 0);
        QCOMPARE(item->checkState(0), Qt::Checked);
    }

    void opensThePageAskedForAndDeletesItself()
    {
        const ImportScene scene;
        const Page page(study, 1);
        page.form->show();
        QVERIFY(page.list()->isVisible());
        page.form->close();
        QTRY_VERIFY(!page.form);
    }
};

PM_TEST_MAIN(SelectHideFormTest)
#include "tst_selecthideform.moc"
