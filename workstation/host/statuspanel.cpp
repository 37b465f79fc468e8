#include "statuspanel.h"

#include "importcentre.h"
#include "plaintooltip.h"

#include <QDir>
#include <QLabel>
#include <QLocale>
#include <QStatusBar>
#include <QStyle>
#include <QStylePainter>

namespace {

constexpr int updateIntervalMs = 200;
constexpr int widestPath = 420;
constexpr int labelMargin = 8;
constexpr int readMs = 5000; ///< how long a message stays at least

/// Ends in an ellipsis where there is no room for all of it.
class ElidedText : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        Q_UNUSED(event)
        const QRect room = contentsRect();
        QStylePainter(this).drawItemText(room, int(Qt::AlignLeft | Qt::AlignVCenter), palette(), isEnabled(),
            fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), foregroundRole());
    }
};

QString readyText()
{
    return StatusPanel::tr("Ready. Drop folders or files anywhere to import them.");
}

} // namespace

StatusPanel::StatusPanel(QStatusBar *bar, const ImportCentre *imports)
    : QObject(bar)
    , m_imports(imports)
    , m_activity(new ElidedText(bar))
    , m_selection(new QLabel(bar))
    , m_counts(new QLabel(bar))
    , m_path(new QLabel(bar))
    , m_idleText(readyText())
{
    m_activity->setObjectName(QStringLiteral("statusActivity"));
    m_selection->setObjectName(QStringLiteral("statusSelection"));
    m_counts->setObjectName(QStringLiteral("statusCounts"));
    m_path->setObjectName(QStringLiteral("statusPath"));
    for (QLabel *label : {m_activity, m_selection, m_counts, m_path}) {
        label->setContentsMargins(labelMargin, 0, labelMargin, 0);
    }
    // However long it is, the numbers beside it stay in sight; all of it is the tool tip.
    m_activity->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_activity->setTextFormat(Qt::PlainText);
    bar->addWidget(m_activity, 1);
    bar->addPermanentWidget(m_selection);
    bar->addPermanentWidget(m_counts);
    bar->addPermanentWidget(m_path);
    connect(&m_timer, &QTimer::timeout, this, &StatusPanel::update);
    m_timer.start(updateIntervalMs);
    update();
}

void StatusPanel::setIndexPath(const QString &path)
{
    const QString native = QDir::toNativeSeparators(path);
    m_path->setText(m_path->fontMetrics().elidedText(native, Qt::ElideMiddle, widestPath));
    m_path->setToolTip(tr("The index: %1").arg(native));
    m_path->setAccessibleName(m_path->toolTip());
}

void StatusPanel::setCounts(const IndexCounts &counts)
{
    if (counts.patients < 0) {
        return;
    }
    const QLocale locale;
    m_counts->setText(tr("Patients %1   Studies %2   Series %3   Images %4")
                          .arg(locale.toString(counts.patients), locale.toString(counts.studies),
                              locale.toString(counts.series), locale.toString(counts.images)));
}

void StatusPanel::setIdleText(const QString &text)
{
    m_idleText = text;
    m_sinceIdleText.start();
    setListing({});
}

void StatusPanel::setListing(const QString &text)
{
    m_listing = text;
    update();
}

void StatusPanel::setTreeProblem(const QString &text)
{
    m_treeProblem = text;
    update();
}

void StatusPanel::setNotice(const QString &text)
{
    m_notice = text;
    update();
}

void StatusPanel::setSelection(const QString &text)
{
    m_selection->setText(text.isEmpty() ? text : tr("Selected: %1").arg(text));
    if (!text.isEmpty() && m_sinceIdleText.isValid() && m_sinceIdleText.hasExpired(readMs)) {
        m_idleText = readyText(); // of something that is over
        update();
    }
}

QString StatusPanel::activityText() const
{
    return m_activity->text();
}

QString StatusPanel::countsText() const
{
    return m_counts->text();
}

void StatusPanel::update()
{
    const QString running = m_imports->activity();
    const QString listing = m_listing.isEmpty() ? m_idleText : m_listing;
    const QString idle = m_treeProblem.isEmpty() ? listing : m_treeProblem;
    const QString said = running.isEmpty() ? idle : running;
    m_activity->setText(m_notice.isEmpty() ? said : said + QStringLiteral("   ") + m_notice);
    m_activity->setToolTip(plainToolTip(m_activity->text()));
}
