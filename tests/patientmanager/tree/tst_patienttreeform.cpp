#include "advancedinquiryform.h"
#include "namedcontrols.h"
#include "selecthideform.h"
#include "testmain.h"
#include "treefixture.h"

#include <QApplication>
#include <QtTest>

/// What the panel tells of, and the windows that it opens.
class PatientTreeFormTest : public TreeFixture
{
    Q_OBJECT

private slots:
    void startRunsTheFirstName()
    {
        store(
            QStringLiteral("b"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("1"));
        store(QStringLiteral("1 Two"), QStringLiteral("patient"), QStringLiteral("PatientID"),
            QStringLiteral("2"));
        store(
            QStringLiteral("b"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("3"));
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

    void buttonsTellAll()
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
        QVERIFY(
            view()->isExpanded(row({0})) && view()->isExpanded(row({0, 0})) && view()->isExpanded(row({1})));
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

    void clicksTellWhatIsBelow()
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
                QStringLiteral("one series: %1|generalseries").arg(series),
                QStringLiteral("table: imageformat"), about}));
        form->onTreeModel(QModelIndex());
        QCOMPARE(log->take(), QStringList());
    }

    /// While the guard asks, another tree may come: a row of the old one stands for nothing any more.
    void guardsDecideAndTakeTheirTime()
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

    void doubleClickMixesLevels()
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

    void filterText_data()
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
            << QList<Row>{words("imageformat|ImageType|=|%2%3|%4"),
                   words("imageformat|FilePath|=|%1'; --|and")}
            << QStringLiteral("ImageType = '%2%3'  %4 FilePath = '%1'; --'and series_fk='%1'");
    }

    void filterText()
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

    void quoteInANameBreaksOnlyTheFilter()
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

    void inquiryGoneWhileShown()
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
        QVERIFY2(
            form->problemText().contains(QLatin1String("PatientWeight")), qPrintable(form->problemText()));
        form->getDeleteIdx(QStringLiteral("ALL"));
        QCOMPARE(names()->count(), 0);
        QCOMPARE(view()->model()->rowCount(), 2);
        QCOMPARE(names()->toolTip(), usual);
        QCOMPARE(problems.takeLast().constFirst().toString(), QString());
    }

    void editorDrivesTheNames()
    {
        store(
            QStringLiteral("b"), QStringLiteral("patient"), QStringLiteral("PatientID"), QStringLiteral("2"));
        open();
        press("AdvancedInquiryNew");
        auto *editor = form->findChild<AdvancedInquiryForm *>();
        for (QWidget *window : QApplication::topLevelWidgets()) {
            editor = editor ? editor : qobject_cast<AdvancedInquiryForm *>(window);
        }
        QVERIFY(editor);
        for (const QString &name :
            {QStringLiteral("C"), QStringLiteral("c")}) { // two, though case is no matter
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

    void windowsAreMadeOnce()
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
};

PM_TEST_MAIN(PatientTreeFormTest)
#include "tst_patienttreeform.moc"
