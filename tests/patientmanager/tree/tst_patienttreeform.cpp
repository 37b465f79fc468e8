#include "advancedinquiryform.h"
#include "namedcontrols.h"
#include "patienttreeform.h"
#include "qpatienttreemodel.h"
#include "selecthideform.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QToolTip>
#include <QTreeView>
#include <QtTest>

#include <optional>

namespace {

const QString all = QStringLiteral("all");

QString text(const QList<qlonglong> &keys)
{
    QStringList parts;
    for (const qlonglong key : keys) {
        parts.append(QString::number(key));
    }
    std::sort(parts.begin(), parts.end());
    return parts.join(QLatin1Char(','));
}

/// All that a panel says, in the order in which it says it.
class Log
{
public:
    explicit Log(PatientTreeForm *form)
    {
        const auto keys = [this, form](auto signal, const char *name) {
            QObject::connect(
                form, signal, form, [this, name](const QList<qlonglong> &pks, const QString &table) {
                    add(name, text(pks) + QLatin1Char('|') + table);
                });
        };
        const auto word = [this, form](auto signal, const char *name) {
            QObject::connect(form, signal, form, [this, name](const QString &value) { add(name, value); });
        };
        keys(&PatientTreeForm::selectPatientPks, "patients");
        keys(&PatientTreeForm::selectStudyPks, "studies");
        keys(&PatientTreeForm::selectSeriesPks, "series");
        keys(&PatientTreeForm::selectSeriesPk, "one series");
        keys(&PatientTreeForm::selectMutiPK, "multiple");
        word(&PatientTreeForm::selectInstancesFilter, "filter");
        word(&PatientTreeForm::selectTable, "table");
        word(&PatientTreeForm::tableInfo, "info");
        QObject::connect(form, &PatientTreeForm::deleteThumbView, form, [this] { add("thumbnails", {}); });
    }
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    void add(const char *name, const QString &value)
    {
        m_lines.append(QStringLiteral("%1: %2").arg(QLatin1String(name), value));
    }
    QStringList m_lines;
};

} // namespace

class PatientTreeFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startRunsTheFirstName();
    void buttonsTellAll();
    void clicksTellWhatIsBelow();
    void guardsDecideAndTakeTheirTime();
    void doubleClickMixesLevels();
    void filterText_data();
    void filterText();
    void quoteInANameBreaksOnlyTheFilter();
    void columnsFollowTheConfiguration();
    void fiftyQueriesUnderAView();
    void inquiryGoneWhileShown();
    void editorDrivesTheNames();
    void windowsAreMadeOnce();
    void enterDoesWhatAClickDoes();
    void cutTextsAreToldWhole();
    void reloadLeavesEverythingInItsPlace();
    void allOfVeryManyAreThePatients();

private:
    void store(const QString &name, const QString &group, const QString &field, const QString &value,
        const QString &logic = QStringLiteral("and"), const QString &symbol = QStringLiteral("=")) const;
    PatientTreeForm &open();
    QTreeView *view() const { return form->findChild<QTreeView *>(); }
    QComboBox *names() const { return form->findChild<QComboBox *>(); }
    void press(const char *button) const
    {
        QTest::mouseClick(form->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
    }
    QModelIndex row(const QList<int> &path) const;

    std::optional<TemporaryIndex> index;
    std::unique_ptr<PatientTreeForm> form;
    std::unique_ptr<Log> log;
    qlonglong patient = 0;
    qlonglong study = 0;
    qlonglong series = 0;
};

void PatientTreeFormTest::init()
{
    index.emplace();
    index->query(QStringLiteral("DELETE FROM andvancequiry"));
    patient = index->addPatient(QStringLiteral("A^One"), QStringLiteral("1"));
    index->addPatient(QStringLiteral("B^Two"), QStringLiteral("2"));
    study = index->addStudy(patient, QStringLiteral("1.1"));
    index->addStudy(patient + 1, QStringLiteral("2.1"));
    index->addSeries(study, QStringLiteral("1.1.1"), QStringLiteral("CT"), 1);
    index->addSeries(study, QStringLiteral("1.1.2"), QStringLiteral("MR"), 2);
    // Keys of the levels differ, so that none passes for another.
    index->query(QStringLiteral("UPDATE generalseries SET pk = pk + 20"));
    series = index->query(QStringLiteral("SELECT min(pk) FROM generalseries")).toLongLong();
    store(all, QStringLiteral("patient"), QStringLiteral("pk"), QStringLiteral("0"), QStringLiteral("and"),
        QStringLiteral(">"));
}

void PatientTreeFormTest::cleanup()
{
    form.reset();
    log.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    index.reset();
}

void PatientTreeFormTest::store(const QString &name, const QString &group, const QString &field,
    const QString &value, const QString &logic, const QString &symbol) const
{
    index->query(
        QStringLiteral("INSERT INTO andvancequiry (UserName, InquiryName, GroupName, FieldName, Symbol, "
                       "FieldValue, Logic, QueryType) VALUES ('super', ?, ?, ?, ?, ?, ?, 'Precise')"),
        {name, group, field, symbol, value, logic});
}

PatientTreeForm &PatientTreeFormTest::open()
{
    form = std::make_unique<PatientTreeForm>(nullptr);
    log = std::make_unique<Log>(form.get());
    form->show();
    return *form;
}

QModelIndex PatientTreeFormTest::row(const QList<int> &path) const
{
    QModelIndex place;
    for (const int step : path) {
        place = view()->model()->index(step, 0, place);
    }
    return place;
}

void PatientTreeFormTest::startRunsTheFirstName()
{
    store(QStringLiteral("b"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("1"));
    store(
        QStringLiteral("1 Two"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("2"));
    store(QStringLiteral("b"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("3"));
    open();
    QStringList listed;
    for (int i = 0; i < names()->count(); ++i) {
        listed.append(names()->itemText(i));
    }
    QCOMPARE(listed, (QStringList{QStringLiteral("1 Two"), all, QStringLiteral("b")}));
    QCOMPARE(view()->model()->rowCount(), 1);
    QCOMPARE(form->width(), 386);
    QCOMPARE(unnamedControl(*form), QString());
    QCOMPARE(view()->selectionMode(), QAbstractItemView::ContiguousSelection);

    index->query(QStringLiteral("DELETE FROM andvancequiry"));
    index->query(
        QStringLiteral("UPDATE patient SET updated_time = '2001-01-01 00:00:00' WHERE PatientID = '1'"));
    open();
    QCOMPARE(names()->count(), 0);
    QCOMPARE(view()->model()->rowCount(), 1); // without a name: what was updated today
    QCOMPARE(form->problemText(), QString());
}

void PatientTreeFormTest::buttonsTellAll()
{
    open();
    const QString pks = text({patient, patient + 1});
    const QStringList patients{QStringLiteral("patients: %1|").arg(pks), QStringLiteral("table: patient"),
        QStringLiteral("info: ALL Patient")};
    const QString thumbnails = QStringLiteral("thumbnails: ");
    bool isWaiting = false;
    connect(form.get(), &PatientTreeForm::inquiryProblem, form.get(),
        [&isWaiting] { isWaiting = QApplication::overrideCursor(); });
    press("AdvancedInquiry");
    QVERIFY(isWaiting && !QApplication::overrideCursor());
    QCOMPARE(log->take(), patients);
    form->reload(); // nobody waits for it
    QVERIFY(!isWaiting);
    QCOMPARE(log->take(), QStringList());
    press("AdvancedInquirySeries");
    QCOMPARE(log->take(),
        (QStringList{QStringLiteral("series: %1|").arg(text({series, series + 1})),
            QStringLiteral("table: generalseries"), QStringLiteral("info: ALL Series"), thumbnails}));
    QVERIFY(view()->isExpanded(row({0})) && view()->isExpanded(row({0, 0})) && view()->isExpanded(row({1})));
    press("AdvancedInquiryStudy");
    QCOMPARE(log->take(),
        (QStringList{QStringLiteral("studies: %1|").arg(text({study, study + 1})),
            QStringLiteral("table: generalstudy"), QStringLiteral("info: ALL Study"), thumbnails}));
    QVERIFY(view()->isExpanded(row({0})) && !view()->isExpanded(row({0, 0})));
    QCOMPARE(view()->indexBelow(row({0, 0})), row({1}));
    press("AdvancedInquiryPatient");
    QCOMPARE(log->take(), patients + QStringList{thumbnails});
    QVERIFY(!view()->isExpanded(row({0})));
}

void PatientTreeFormTest::clicksTellWhatIsBelow()
{
    open();
    const QString about = QStringLiteral("info: patientName:A^One; patientPK:%1").arg(patient);
    emit view()->clicked(row({0}));
    QCOMPARE(log->take(),
        (QStringList{QStringLiteral("studies: %1|generalstudy").arg(study),
            QStringLiteral("table: generalstudy"), about}));
    emit view()->clicked(row({0, 0}));
    QCOMPARE(log->take(),
        (QStringList{QStringLiteral("series: %1|generalseries").arg(text({series, series + 1})),
            QStringLiteral("table: generalseries"), about}));
    emit view()->clicked(row({0, 0, 0}).siblingAtColumn(2));
    QCOMPARE(log->take(),
        (QStringList{QStringLiteral("filter: series_fk='%1'").arg(series),
            QStringLiteral("one series: %1|generalseries").arg(series), QStringLiteral("table: imageformat"),
            about}));
    form->onTreeModel(QModelIndex());
    QCOMPARE(log->take(), QStringList());
}

/// While the guard asks, another tree may come: a row of the old one stands for nothing any more.
void PatientTreeFormTest::guardsDecideAndTakeTheirTime()
{
    open();
    bool agrees = false;
    form->setGuard([this, &agrees] {
        form->reload();
        return agrees;
    });
    press("AdvancedInquirySeries");
    QCOMPARE(log->take(), QStringList());
    agrees = true;
    form->onTreeModel(row({0}));
    QCOMPARE(log->take(), QStringList());
    press("AdvancedInquiryPatient");
    QCOMPARE(log->take().size(), 4);
}

void PatientTreeFormTest::doubleClickMixesLevels()
{
    open();
    view()->expandAll();
    const auto select = [this](const QModelIndex &chosen) {
        view()->selectionModel()->select(chosen, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    };
    select(row({0}));
    select(row({0, 0, 1}));
    form->onMutiTreeModel();
    QCOMPARE(log->take(),
        QStringList{QStringLiteral("multiple: %1|generalseries").arg(text({patient, series + 1}))});
    view()->clearSelection();
    const QPoint place = view()->visualRect(row({1})).center();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    log->take();
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QVERIFY(log->take().contains(QStringLiteral("multiple: %1|patient").arg(patient + 1)));
}

void PatientTreeFormTest::filterText_data()
{
    using Row = QStringList; // group, field, symbol, value, logic
    const QString image = QStringLiteral("imageformat");
    QTest::addColumn<QList<QStringList>>("rows");
    QTest::addColumn<QString>("filter");
    const auto words = [](const char *line) { return QString::fromUtf8(line).split(QLatin1Char('|')); };
    QTest::newRow("one condition") << QList<Row>{words("imageformat|Rows|>|100|or")}
                                   << QStringLiteral("Rows > '100' and series_fk='%1'");
    QTest::newRow("later conditions are joined by the row before, whose group sorts before")
        << QList<Row>{words("patient|PatientName|=|Z|xor"), words("imageformat|Rows|=|1|or"),
               words("generalseries|Modality|=|CT|nor"), words("imageformat|Columns|<|2|and"),
               words("imageformat|FilePath|=|x|and")}
        << QStringLiteral("Rows = '1'  or Columns < '2' and FilePath = 'x'and series_fk='%1'");
    QTest::newRow("an empty value moves the later ones")
        << QList<Row>{words("imageformat|Rows|=||and"), words("imageformat|Columns|=|2|and"),
               words("imageformat|FilePath|=|3|and")}
        << QStringLiteral("Rows = ''  and Columns = 'NULL' and FilePath = '2'and series_fk='%1'");
    QTest::newRow("marks of templates in values")
        << QList<Row>{words("imageformat|ImageType|=|%2%3|%4"), words("imageformat|FilePath|=|%1'; --|and")}
        << QStringLiteral("ImageType = '%2%3'  %4 FilePath = '%1'; --'and series_fk='%1'");
}

void PatientTreeFormTest::filterText()
{
    QFETCH(QList<QStringList>, rows);
    QFETCH(QString, filter);
    for (const QStringList &row : rows) {
        store(QStringLiteral("images"), row[0], row[1], row[3], row[4], row[2]);
    }
    open();
    form->getComboBoxIdx(QStringLiteral("IMAGES")); // blind to case
    emit view()->clicked(row({0, 0, 0}));
    const int last = filter.lastIndexOf(QLatin1String("%1"));
    QCOMPARE(log->take().constFirst(),
        QStringLiteral("filter: ") + filter.replace(last, 2, QString::number(series)));
}

void PatientTreeFormTest::quoteInANameBreaksOnlyTheFilter()
{
    const QString name = QStringLiteral("O'Brien");
    store(name, QStringLiteral("imageformat"), QStringLiteral("Rows"), QStringLiteral("1"));
    store(name, QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("1"));
    index->addImage(series, QStringLiteral("1.1.1.1"));
    index->query(QStringLiteral("UPDATE imageformat SET \"Rows\" = 1"));
    open();
    form->getComboBoxIdx(name);
    press("AdvancedInquiry");
    QCOMPARE(view()->model()->rowCount(), 1);
    log->take();
    emit view()->clicked(row({0, 0, 0}));
    QCOMPARE(log->take().constFirst(), QStringLiteral("filter: series_fk='%1'").arg(series));
}

void PatientTreeFormTest::columnsFollowTheConfiguration()
{
    index->query(QStringLiteral("UPDATE generalseriesuser SET pk = 1"));
    index->query(QStringLiteral("UPDATE patientuser SET PatientID = 0"));
    open();
    const auto columnsNamed = [this](const QString &name) {
        QList<int> columns;
        for (int column = 0; column < view()->model()->columnCount(); ++column) {
            if (view()->model()->headerData(column, Qt::Horizontal).toString() == name) {
                columns.append(column);
            }
        }
        return columns;
    };
    const QList<int> keys = columnsNamed(QStringLiteral("pk"));
    QCOMPARE(keys.size(), 3);
    QCOMPARE(columnsNamed(QStringLiteral("PatientID")).size(), 0);
    QVERIFY(!view()->isColumnHidden(keys[0]) && view()->isColumnHidden(keys[1]));
    QVERIFY(!view()->isColumnHidden(keys[2]));
    index->query(QStringLiteral("UPDATE generalseriesuser SET pk = 0"));
    index->query(QStringLiteral("UPDATE patientuser SET PatientID = 1"));
    press("AdvancedInquiry");
    const QList<int> later = columnsNamed(QStringLiteral("pk"));
    QCOMPARE(later[1], keys[1] + 1);
    QCOMPARE(view()->header()->hiddenSectionCount(), 2);
    QVERIFY(view()->isColumnHidden(later[1]) && view()->isColumnHidden(later[2]));
}

void PatientTreeFormTest::fiftyQueriesUnderAView()
{
    open();
    store(QStringLiteral("CT"), QStringLiteral("generalseries"), QStringLiteral("Modality"),
        QStringLiteral("CT"));
    form->getComboBox(QStringLiteral("CT"));
    QPointer<QAbstractItemModel> old;
    for (int round = 0; round < 50; ++round) {
        form->getComboBoxIdx(round % 2 ? all : QStringLiteral("CT"));
        press("AdvancedInquiry");
        QVERIFY(view()->model() != old);
        old = view()->model();
        new QAbstractItemModelTester(old, QAbstractItemModelTester::FailureReportingMode::Fatal, old);
        QCOMPARE(old->rowCount(), round % 2 ? 2 : 1);
        view()->expandAll();
        view()->selectAll();
        view()->setCurrentIndex(row({0, 0}));
        if (round % 3 == 0) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCOMPARE(form->findChildren<QPatientTreeModel *>().size(), 1);
        }
    }
}

void PatientTreeFormTest::inquiryGoneWhileShown()
{
    open();
    const QString usual = names()->toolTip();
    QSignalSpy problems(form.get(), &PatientTreeForm::inquiryProblem);
    index->query(QStringLiteral("DELETE FROM andvancequiry"));
    emit view()->clicked(row({0, 0, 0}));
    QCOMPARE(log->take().size(), 4);
    press("AdvancedInquiry");
    QCOMPARE(view()->model()->rowCount(), 0);
    QCOMPARE(log->take().constFirst(), QStringLiteral("patients: |"));
    QVERIFY(form->problemText().contains(all));
    QCOMPARE(names()->toolTip(), form->problemText());
    QCOMPARE(problems.takeFirst().constFirst().toString(), form->problemText());

    store(all, QStringLiteral("patient"), QStringLiteral("PatientWeight"), QStringLiteral("%2"));
    press("AdvancedInquiry");
    QVERIFY2(form->problemText().contains(QLatin1String("PatientWeight")), qPrintable(form->problemText()));
    form->getDeleteIdx(QStringLiteral("ALL"));
    QCOMPARE(names()->count(), 0);
    QCOMPARE(view()->model()->rowCount(), 2);
    QCOMPARE(names()->toolTip(), usual);
    QCOMPARE(problems.takeLast().constFirst().toString(), QString());
}

void PatientTreeFormTest::editorDrivesTheNames()
{
    store(QStringLiteral("b"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("2"));
    open();
    press("AdvancedInquiryNew");
    auto *editor = form->findChild<AdvancedInquiryForm *>();
    for (QWidget *window : QApplication::topLevelWidgets()) {
        editor = editor ? editor : qobject_cast<AdvancedInquiryForm *>(window);
    }
    QVERIFY(editor);
    for (const QString &name : {QStringLiteral("C"), QStringLiteral("c")}) { // two, though case is no matter
        emit editor->setComboBox(name);
        emit editor->setComboBoxIdx(name);
        QCOMPARE(names()->currentText(), name);
    }
    emit editor->setComboBoxIdx(QStringLiteral("unknown"));
    QCOMPARE(names()->currentText(), QStringLiteral("c"));
    emit editor->setDeleteIdx(QStringLiteral("c"));
    QCOMPARE(names()->currentText(), QStringLiteral("C"));
    emit editor->setComboBoxIdx(QStringLiteral("B"));
    emit editor->setDeleteIdx(QStringLiteral("c"));
    QCOMPARE(names()->currentText(), QStringLiteral("b"));
    QCOMPARE(view()->model()->rowCount(), 1);
    QCOMPARE(log->take().size(), 6);
}

void PatientTreeFormTest::windowsAreMadeOnce()
{
    open();
    const auto windows = [](const QMetaObject &meta) {
        QWidgetList found;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (meta.cast(window)) {
                found.append(window);
            }
        }
        return found;
    };
    QSignalSpy relayed(form.get(), &PatientTreeForm::updateFieldHeader);
    for (int round = 0; round < 6; ++round) {
        for (int click = 0; click < 2; ++click) {
            press("AdvancedInquiryNew");
            press("AdvancedInquirySettingField");
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QWidgetList editors = windows(AdvancedInquiryForm::staticMetaObject);
        const QWidgetList fields = windows(selectHideForm::staticMetaObject);
        QCOMPARE(editors.size(), 1);
        QCOMPARE(fields.size(), 1);
        QVERIFY(editors[0]->isVisible() && editors[0]->windowFlags() & Qt::WindowStaysOnTopHint);
        QVERIFY(fields[0]->isVisible() && fields[0]->windowFlags() & Qt::WindowStaysOnTopHint);
        fields[0]->showMinimized();
        press("AdvancedInquirySettingField");
        QVERIFY(!fields[0]->isMinimized());
        QVERIFY(QMetaObject::invokeMethod(fields[0], "updateFieldHeader"));
        QCOMPARE(relayed.size(), round + 1);
        emit qobject_cast<AdvancedInquiryForm *>(editors[0])->setComboBox(QStringLiteral("new"));
        QCOMPARE(names()->count(), round + 2);
        if (round < 5) {
            editors[0]->close();
            fields[0]->close();
        }
        if (round % 2) { // else the next click finds them closed, and not yet deleted
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    form.reset();
    QVERIFY(windows(AdvancedInquiryForm::staticMetaObject).isEmpty());
    QVERIFY(windows(selectHideForm::staticMetaObject).isEmpty());
}

void PatientTreeFormTest::enterDoesWhatAClickDoes()
{
    open();
    view()->setFocus();
    view()->setCurrentIndex(row({0}));
    QTest::keyClick(view(), Qt::Key_Right);
    QVERIFY(view()->isExpanded(row({0})));
    QTest::keyClick(view(), Qt::Key_Down);
    QCOMPARE(log->take(), QStringList());
    QTest::keyClick(view(), Qt::Key_Return);
    const QStringList byReturn = log->take();
    QCOMPARE(byReturn.value(1), QStringLiteral("table: generalseries"));
    QTest::keyClick(view(), Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(log->take(), byReturn);
    QTest::mouseClick(
        view()->viewport(), Qt::LeftButton, Qt::NoModifier, view()->visualRect(row({0, 0})).center());
    QCOMPARE(log->take(), byReturn);
}

void PatientTreeFormTest::cutTextsAreToldWhole()
{
    const QString description = QStringLiteral("<b>Skull</b> ") + QString(200, QLatin1Char('x'));
    index->query(QStringLiteral("UPDATE generalstudy SET StudyDate = '20240229', StudyDescription = ?"),
        {description});
    open();
    view()->expand(row({0}));
    const auto tipAt = [this](const QModelIndex &place) {
        const QPoint point = view()->visualRect(place).center();
        QHelpEvent event(QEvent::ToolTip, point, view()->viewport()->mapToGlobal(point));
        QToolTip::hideText();
        QCoreApplication::sendEvent(view()->viewport(), &event);
        return QToolTip::text();
    };
    QCOMPARE(tipAt(row({0})), view()->toolTip());
    const QString tip = tipAt(row({0, 0}));
    QVERIFY2(tip.contains(QLatin1String("2024-02-29")), qPrintable(tip));
    QVERIFY(tip.contains(QLatin1String("CT, MR")) && tip.contains(description.toHtmlEscaped()));
}

void PatientTreeFormTest::reloadLeavesEverythingInItsPlace()
{
    for (int i = 0; i < 100; ++i) {
        index->addPatient(QStringLiteral("P^%1").arg(i, 3, 10, QLatin1Char('0')), QString::number(10 + i));
    }
    open();
    const auto scrolled = [this] {
        return QPair<int, int>(view()->verticalScrollBar()->value(), view()->horizontalScrollBar()->value());
    };
    view()->expand(row({0}));
    view()->header()->moveSection(2, 0);
    view()->setColumnWidth(2, 300);
    view()->setCurrentIndex(row({90}).siblingAtColumn(1));
    view()->scrollToTop();
    view()->horizontalScrollBar()->setValue(150);
    form->reload();
    QCOMPARE(scrolled(), qMakePair(0, 150));
    QCOMPARE(view()->currentIndex(), row({90}).siblingAtColumn(1));
    QVERIFY(view()->isExpanded(row({0})));
    view()->verticalScrollBar()->setValue(30);
    form->reload();
    QCOMPARE(scrolled(), qMakePair(30, 150));
    QCOMPARE(view()->header()->logicalIndex(0), 2);

    // As many columns, but others: neither their order nor what is hidden of them is taken over.
    index->query(QStringLiteral("UPDATE generalseriesuser SET pk = 1"));
    form->reload();
    QCOMPARE(view()->header()->hiddenSectionCount(), 1);
    const int columns = view()->header()->count();
    index->query(QStringLiteral("UPDATE patientuser SET PatientID = 0, PatientBirthTime = 1"));
    form->reload();
    QCOMPARE(view()->header()->count(), columns);
    QCOMPARE(view()->header()->logicalIndex(0), 0);
    QCOMPARE(view()->header()->hiddenSectionCount(), 1);
}

void PatientTreeFormTest::allOfVeryManyAreThePatients()
{
    open();
    press("AdvancedInquirySeries");
    view()->selectAll();
    QCOMPARE(view()->selectionModel()->selectedRows().size(), 6);
    const auto chosenBy = [this](Qt::Key from, Qt::Key to) {
        QTest::keyClick(view(), from);
        QElapsedTimer clock;
        clock.start();
        QTest::keyClick(view(), to, Qt::ShiftModifier);
        return clock.elapsed() < 2000 ? view()->selectionModel()->selectedRows().size() : -1;
    };
    const QString counting =
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 5009) ");
    index->query(
        counting + QStringLiteral("INSERT INTO patient (PatientName, PatientID) SELECT 'Z', i FROM n"));
    index->query(QStringLiteral("INSERT INTO generalstudy (patient_fk, StudyInstanceUID) "
                                "SELECT pk, 'u' || pk FROM patient WHERE PatientName = 'Z'"));
    press("AdvancedInquiry");
    view()->setFocus();
    QCOMPARE(chosenBy(Qt::Key_Home, Qt::Key_End), 5002);
    QCOMPARE(chosenBy(Qt::Key_Up, Qt::Key_Home), 5001);
    press("AdvancedInquiryStudy");
    view()->selectAll();
    QCOMPARE(view()->selectionModel()->selectedRows().size(), 5002);
    QVERIFY(!view()->selectionModel()->isSelected(row({0, 0})));
    QCOMPARE(chosenBy(Qt::Key_Down, Qt::Key_End), 5002);
    QVERIFY(!view()->selectionModel()->isSelected(row({0, 0})));
    QCOMPARE(chosenBy(Qt::Key_Up, Qt::Key_Home), 5002);
    QVERIFY(chosenBy(Qt::Key_Down, Qt::Key_PageDown) > 2);
    QVERIFY(view()->selectionModel()->isSelected(row({0, 0})));
    view()->setCurrentIndex({});
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, {view()->width() / 2, 5});
    QCOMPARE(view()->selectionModel()->selectedRows().size(), 1);
}

PM_TEST_MAIN(PatientTreeFormTest)
#include "tst_patienttreeform.moc"
