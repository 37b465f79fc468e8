#include "kivmessageboxform.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

namespace {

constexpr int lineLength = 60; ///< characters of an average text line
constexpr int iconGap = 16;

std::function<int(const kivMessageBoxForm::Request &)> &currentAnswerer()
{
    static std::function<int(const kivMessageBoxForm::Request &)> answerer;
    return answerer;
}

QStyle::StandardPixmap iconOf(kivMessageBoxForm::Kind kind)
{
    switch (kind) {
    case kivMessageBoxForm::Kind::Warning:
        return QStyle::SP_MessageBoxWarning;
    case kivMessageBoxForm::Kind::Question:
        return QStyle::SP_MessageBoxQuestion;
    case kivMessageBoxForm::Kind::Information:
        break;
    }
    return QStyle::SP_MessageBoxInformation;
}

} // namespace

kivMessageBoxForm::kivMessageBoxForm(const Request &request, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
    , m_request(request)
{
    build();
}

void kivMessageBoxForm::build()
{
    setWindowTitle(m_request.title);
    setAccessibleName(m_request.title);
    setAccessibleDescription(m_request.text);
    // The companion windows stay on top; a box behind one of them could not be answered.
    setWindowFlag(Qt::WindowStaysOnTopHint);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(buildBody(), 1);
    layout->addWidget(buildButtons());
}

QLayout *kivMessageBoxForm::buildBody()
{
    const int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    auto *icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(iconOf(m_request.kind), nullptr, this).pixmap(side, side));
    auto *body = new QHBoxLayout;
    body->setSpacing(iconGap);
    body->addWidget(icon, 0, Qt::AlignTop);
    body->addWidget(buildText(), 1);
    return body;
}

/// The text at its natural width, wrapped where that is longer than a line, scrolled where it is taller than
/// half the screen.
QWidget *kivMessageBoxForm::buildText()
{
    auto *text = new QLabel(m_request.text);
    text->setObjectName(QStringLiteral("text"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const QFontMetrics metrics = fontMetrics();
    const int natural = metrics.size(0, m_request.text).width() + metrics.averageCharWidth();
    const int width = qMin(natural, lineLength * metrics.averageCharWidth());
    const int tallest = QGuiApplication::primaryScreen()->availableGeometry().height() / 2;
    auto *scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(text);
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    scroll->setMinimumSize(width + bar, qMin(text->heightForWidth(width), tallest));
    return scroll;
}

QWidget *kivMessageBoxForm::buildButtons()
{
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setText(tr("OK"));
    QPushButton *standard = ok;
    if (m_request.buttons == OkAndCancel) {
        QPushButton *cancel = buttons->addButton(QDialogButtonBox::Cancel);
        cancel->setText(tr("Cancel"));
        standard = m_request.defaultButton == AnswerCancel ? cancel : ok;
    }
    standard->setDefault(true);
    standard->setFocus();
    connect(ok, &QPushButton::clicked, this, [this] { done(AnswerOk); });
    connect(buttons, &QDialogButtonBox::rejected, this, &kivMessageBoxForm::reject);
    return buttons;
}

void kivMessageBoxForm::reject()
{
    done(m_request.buttons == OkAndCancel ? AnswerCancel : AnswerOk);
}

int kivMessageBoxForm::ask(const Request &request, QWidget *parent)
{
    if (currentAnswerer()) {
        return currentAnswerer()(request);
    }
    kivMessageBoxForm box(request, parent ? parent : QApplication::activeWindow());
    return box.exec();
}

int kivMessageBoxForm::information(
    QWidget *parent, const QString &title, const QString &text, int buttons, int defaultButton)
{
    return ask({Kind::Information, title, text, buttons, defaultButton}, parent);
}

int kivMessageBoxForm::warning(
    QWidget *parent, const QString &title, const QString &text, int buttons, int defaultButton)
{
    return ask({Kind::Warning, title, text, buttons, defaultButton}, parent);
}

int kivMessageBoxForm::question(
    QWidget *parent, const QString &title, const QString &text, int buttons, int defaultButton)
{
    return ask({Kind::Question, title, text, buttons, defaultButton}, parent);
}

void kivMessageBoxForm::setAnswerer(const std::function<int(const Request &)> &answerer)
{
    currentAnswerer() = answerer;
}
