#include "inquirysaveform.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int usualNameLength = 40; ///< characters

} // namespace

InquirySaveForm::InquirySaveForm(QWidget *parent)
    : QWidget(parent, Qt::Dialog)
    , m_name(new QLineEdit(this))
    , m_refusal(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    // The editor that shows it stays on top itself.
    setWindowFlag(Qt::WindowStaysOnTopHint);
    build();
}

void InquirySaveForm::build()
{
    setWindowTitle(tr("Save Inquiry As"));
    auto *label = new QLabel(tr("&Name of the inquiry"), this);
    label->setBuddy(m_name);
    m_name->setObjectName(QStringLiteral("name"));
    m_name->setToolTip(tr("A name that no stored inquiry has"));
    m_name->setAccessibleName(tr("Name of the inquiry"));
    m_name->setMinimumWidth(usualNameLength * fontMetrics().averageCharWidth());
    m_refusal->setObjectName(QStringLiteral("refusal"));
    m_refusal->setTextFormat(Qt::PlainText);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    const auto describe = [buttons](QDialogButtonBox::StandardButton kind, const QString &text) {
        buttons->button(kind)->setToolTip(text);
        buttons->button(kind)->setAccessibleName(text);
    };
    describe(QDialogButtonBox::Ok, tr("Save under this name"));
    describe(QDialogButtonBox::Cancel, tr("Save nothing"));
    connect(buttons, &QDialogButtonBox::accepted, this, &InquirySaveForm::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(m_name, &QLineEdit::returnPressed, this, &InquirySaveForm::accept);
    connect(m_name, &QLineEdit::textEdited, m_refusal, &QLabel::clear);
    auto *layout = new QVBoxLayout(this);
    for (QWidget *part : {static_cast<QWidget *>(label), static_cast<QWidget *>(m_name),
             static_cast<QWidget *>(m_refusal), static_cast<QWidget *>(buttons)}) {
        layout->addWidget(part);
    }
    m_name->setFocus();
}

void InquirySaveForm::accept()
{
    const QString name = m_name->text().trimmed();
    if (name.isEmpty()) {
        onSameInquiryName(tr("The inquiry needs a name"));
    } else {
        emit setText(name);
    }
}

/// Escape that no menu had a use for.
void InquirySaveForm::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel)) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void InquirySaveForm::onSameInquiryName(const QString &text)
{
    m_refusal->setText(text);
    m_refusal->setAccessibleDescription(text);
    if (text.isEmpty()) {
        close();
    } else {
        m_name->setFocus();
        m_name->selectAll();
    }
}
