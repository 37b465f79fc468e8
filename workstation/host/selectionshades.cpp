#include "selectionshades.h"

#include "ntableview.h"
#include "palettes.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "recordform.h"
#include "selectionstatus.h"
#include "windowparts.h"

#include <QEvent>
#include <QTreeView>

namespace {

/// The colours of a marked row that nothing acts on; all others stay those of the application.
QPalette faintPalette(bool isDark)
{
    QPalette palette;
    const Palettes::MarkColours colours = Palettes::faintMark(isDark);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Highlight, colours.ground);
        palette.setColor(group, QPalette::HighlightedText, colours.text);
    }
    return palette;
}

} // namespace

SelectionShades::SelectionShades(const WindowParts &parts, QWidget *window)
    : QObject(window)
    , m_selection(parts.selection)
{
    for (const RecordForm *form : parts.forms) {
        m_views.append(form->view());
    }
    m_views.append(parts.mainWindow->getPatientTreeForm()->findChild<QTreeView *>());
    connect(m_selection, &SelectionStatus::changed, this, &SelectionShades::update);
    window->installEventFilter(this);
    update();
}

/// The colours of the application may become others.
bool SelectionShades::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PaletteChange) {
        update();
    }
    return QObject::eventFilter(watched, event);
}

void SelectionShades::update()
{
    const RecordSelection taken = m_selection->forActions();
    const QPalette faint = faintPalette(Palettes::isDark(QPalette()));
    for (int place = 0; place < m_views.size(); ++place) {
        const bool isTaken = !taken.isEmpty() && place == int(taken.level);
        if (m_views[place]) {
            m_views[place]->setPalette(isTaken ? QPalette() : faint);
        }
    }
}
