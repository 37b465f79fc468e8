#include "retiredtree.h"

#include "qpatients.h"
#include "qpatienttreemodel.h"

#include <QElapsedTimer>

namespace {

constexpr int smallTree = 5000; ///< series, which are most of a tree
constexpr int sliceMs = 8;
constexpr int patientsAtOnce = 20;

} // namespace

void RetiredTree::retire(QPatientTreeModel *model, QPatients *patients)
{
    if (patients->getAllSeries().size() <= smallTree) {
        model->deleteLater();
    } else {
        new RetiredTree(model, patients);
    }
}

RetiredTree::RetiredTree(QPatientTreeModel *model, QPatients *patients)
    : QObject(model)
    , m_model(model)
    , m_patients(patients)
{
    connect(&m_timer, &QTimer::timeout, this, &RetiredTree::deleteSome);
    m_timer.start(0);
}

void RetiredTree::deleteSome()
{
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < sliceMs) {
        if (m_model->rowCount() == 0) {
            m_timer.stop();
            m_model->deleteLater();
            return;
        }
        m_model->dropLast(patientsAtOnce); // the items before the records that they borrow
        m_patients->dropLast(patientsAtOnce);
    }
}
