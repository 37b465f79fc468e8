#include "frame.h"

#include "indexconnection.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "testmain.h"

#include <QAction>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QtTest>

Frame::Frame(int patients)
{
    // Slots of the forms are named after widgets that they do not have; Qt says so by design.
    allowWarningsOfNamedSlots();
    qRegisterMetaType<ImportReport>("ImportReport");
    fill(patients);
    window = std::make_unique<WorkstationWindow>();
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get())) {
        qFatal("the window does not come up");
    }
}

void Frame::fill(int patients) const
{
    index.query(QStringLiteral("BEGIN"));
    for (int i = 1; i <= patients; ++i) {
        const QString uid = QStringLiteral("1.2.%1").arg(i);
        const qlonglong patient = index.addPatient(
            QStringLiteral("Start^%1").arg(i, 4, 10, QLatin1Char('0')), QStringLiteral("S%1").arg(i));
        const qlonglong series = index.addSeries(index.addStudy(patient, uid), uid + QStringLiteral(".1"));
        index.addImage(series, uid + QStringLiteral(".1.1"));
    }
    index.query(QStringLiteral("COMMIT"));
}

NTableView *Frame::patientView() const
{
    return patients()->view();
}

NTableView *Frame::studyView() const
{
    return studies()->view();
}

QAction *Frame::action(const char *objectName) const
{
    auto *found = window->findChild<QAction *>(QLatin1String(objectName));
    if (!found) {
        qFatal("no action %s", objectName);
    }
    return found;
}

void Frame::addFromOutside(const QString &name) const
{
    const IndexConnection other(index.path());
    WriteTransaction transaction(other.database());
    QSqlQuery query(other.database());
    query.prepare(QStringLiteral("INSERT INTO patient (PatientName, PatientID) VALUES (?, ?)"));
    query.addBindValue(name);
    query.addBindValue(name);
    if (!query.exec() || !transaction.commit()) {
        qFatal("the second writer cannot write");
    }
}

void Frame::click(NTableView *view, int row, const QString &column)
{
    const QModelIndex cell = view->model()->index(row, columnOf(view, column));
    view->scrollTo(cell);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
}

int Frame::columnOf(NTableView *view, const QString &column)
{
    const auto *model = qobject_cast<QSqlTableModel *>(view->model());
    return model ? model->fieldIndex(column) : -1;
}
