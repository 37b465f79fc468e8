#include "liverefresh.h"

#include "ntableview.h"
#include "recordform.h"

#include <QApplication>
#include <QSqlTableModel>

#include <algorithm>

namespace {

/// How often rows come in at most, and how soon a hold is looked at again.
constexpr qint64 shortestPauseMs = 400;
/// At most a tenth of the GUI's time goes into reloads.
constexpr qint64 pauseFactor = 9;

/// The first rows of a table tell how wide its columns should be; later ones leave the widths alone.
void reloadForm(RecordForm *form)
{
    const bool wasEmpty = form->tableModel()->rowCount() == 0;
    form->reload();
    if (wasEmpty && form->tableModel()->rowCount() > 0) {
        form->view()->resizeColumnsToContents();
    }
}

} // namespace

LiveRefresh::LiveRefresh(QVector<RecordForm *> forms, QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &LiveRefresh::tryReload);
    for (RecordForm *form : qAsConst(forms)) {
        m_forms.append(form);
        connect(form, &RecordForm::editsChanged, this, [this] {
            if (m_pending) {
                m_timer.start(0);
            }
        });
    }
}

void LiveRefresh::onIndexChanged()
{
    m_pending = true;
    if (!m_timer.isActive()) {
        const qint64 since = m_sinceReload.isValid() ? m_sinceReload.elapsed() : m_pauseMs;
        m_timer.start(int(std::max<qint64>(0, m_pauseMs - since)));
    }
}

void LiveRefresh::tryReload()
{
    if (!m_pending) {
        return;
    }
    if (mustHold()) {
        m_timer.start(shortestPauseMs);
        return;
    }
    refreshNow();
}

void LiveRefresh::refreshNow()
{
    QElapsedTimer cost;
    cost.start();
    m_pending = false;
    for (const QPointer<RecordForm> &form : qAsConst(m_forms)) {
        if (form && form->isVisible()) {
            reloadForm(form);
        }
    }
    m_pauseMs = std::max(shortestPauseMs, cost.elapsed() * pauseFactor);
    m_sinceReload.start();
    emit refreshed();
}

bool LiveRefresh::mustHold() const
{
    const auto isBusy = [](const QPointer<RecordForm> &form) {
        return form && (form->hasUnsavedEdits() || form->isEditing());
    };
    return QApplication::mouseButtons() != Qt::NoButton
        || std::any_of(m_forms.begin(), m_forms.end(), isBusy);
}
