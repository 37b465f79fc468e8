#include "patientqueryform.h"

#include "ui_patientqueryform.h"

#include <QAction>
#include <QDockWidget>
#include <QMouseEvent>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace {

/// Read at construction since ever, and used by nobody; an index without the table is no matter.
void readInquiryNames()
{
    QSet<QString> names;
    const QSqlDatabase index = QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false);
    QSqlQuery query(index);
    if (index.isOpen() && query.exec(QStringLiteral("SELECT InquiryName FROM andvancequiry"))) {
        while (query.next()) {
            names.insert(query.value(0).toString());
        }
    }
}

void append(QString *filter, const QString &condition)
{
    if (!filter->isEmpty()) {
        filter->append(QLatin1String("&&"));
    }
    filter->append(condition);
}

/// Shows or hides the body of a section; the section keeps no room for a body that is hidden.
void collapseOrExpand(QWidget *section, const QWidget *header, QWidget *body)
{
    if (!section->isVisible()) { // its parts have no size yet
        body->resize(body->sizeHint().expandedTo(body->minimumSize()));
    }
    const int headerHeight = section->isVisible() ? header->height() : header->sizeHint().height();
    if (!body->isHidden()) {
        body->hide();
        section->setFixedHeight(headerHeight);
    } else {
        section->layout()->addWidget(body);
        section->setFixedHeight(headerHeight + body->height());
        body->show();
    }
}

/// A dock only hides the title bar that it no longer uses.
void setTitleBar(QDockWidget *dock, QWidget *bar)
{
    QWidget *old = dock->titleBarWidget();
    dock->setTitleBarWidget(bar);
    delete old;
}

void removeTitleBar(QDockWidget *dock)
{
    setTitleBar(dock, new QWidget(dock));
}

/// The field within a date edit has no name of its own.
void nameField(const QDateEdit *edit)
{
    auto *field = edit->findChild<QLineEdit *>();
    field->setAccessibleName(edit->accessibleName());
    field->setToolTip(edit->toolTip());
}

} // namespace

PatientQueryForm::PatientQueryForm(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::PatientQueryForm>())
{
    ui->setupUi(this);
    connect(ui->NameCheck, &QAbstractButton::clicked, this, &PatientQueryForm::enablePatient);
    connect(ui->PatientIDCheck, &QAbstractButton::clicked, this, &PatientQueryForm::enablePatientID);
    connect(ui->IDCardNumCheck, &QAbstractButton::clicked, this, &PatientQueryForm::enableIDCardNum);
    nameField(ui->InPatientNo);
    nameField(ui->OutPatient);
    readInquiryNames();
}

PatientQueryForm::~PatientQueryForm() = default;

QString PatientQueryForm::filterText() const
{
    QString filter;
    if (ui->NameCheck->isChecked()) {
        append(&filter, tr("PatientName = '%1'").arg(ui->PatientName->text()));
    }
    if (ui->PatientIDCheck->isChecked()) {
        append(&filter, tr("PatientID = '%1'").arg(ui->PatientID->text()));
    }
    if (!ui->InPatientNo->text().isEmpty()) {
        append(&filter, tr("updated_time >= '%1'").arg(ui->InPatientNo->text()));
    }
    if (!ui->OutPatient->text().isEmpty()) {
        append(&filter, tr("updated_time <= '%1'").arg(ui->OutPatient->text()));
    }
    return filter;
}

void PatientQueryForm::on_search_clicked()
{
    emit searchPatient(filterText());
}

void PatientQueryForm::on_AdvanceInquiry_clicked(bool checked)
{
    emit IsChecked(checked);
    ui->search->setEnabled(!ui->AdvanceInquiry->isChecked());
    emit advanceInquiry(ui->AdvanceInquiry->isChecked());
}

void PatientQueryForm::on_LoadDir_clicked()
{
    emit loadDir(true);
}

void PatientQueryForm::on_btQueryMinimize_clicked()
{
    collapseOrExpand(ui->PatientQueryWidget, ui->QueryFormTextWidget2, ui->QueryItemWidget);
}

void PatientQueryForm::on_btThumbnailMinimize_clicked()
{
    collapseOrExpand(ui->ThumbnailWidget, ui->QueryFormTextWidget4, ui->QueryWidget);
}

void PatientQueryForm::on_btApplicationMinimize_clicked()
{
    collapseOrExpand(ui->ApplicationWidget, ui->QueryFormTextWidget3, ui->ApplicationLayoutWidget);
}

void PatientQueryForm::on_pushButton_joint_clicked(bool)
{
    emit jointStart();
}

void PatientQueryForm::on_pushButton_regist_clicked()
{
    emit compareStart();
}

void PatientQueryForm::on_pushButton_swi_clicked(bool)
{
    emit swiStart();
}

void PatientQueryForm::on_pushButton_vessel_clicked(bool)
{
    emit vesselStart();
}

void PatientQueryForm::on_pushButton_infarction_clicked(bool checked)
{
    emit brainSegment(checked);
}

void PatientQueryForm::on_pushButton_swim_clicked() { }

void PatientQueryForm::on_pushButton_ich_clicked(bool) { }

void PatientQueryForm::on_pushButton_clicked() { }

void PatientQueryForm::enablePatient(bool enabled)
{
    ui->PatientName->setEnabled(enabled);
}

void PatientQueryForm::enablePatientID(bool enabled)
{
    ui->PatientID->setEnabled(enabled);
}

void PatientQueryForm::enableIDCardNum(bool enabled)
{
    ui->IDCardNum->setEnabled(enabled);
}

void PatientQueryForm::enableInPatientNo(bool enabled)
{
    ui->InPatientNo->setEnabled(enabled);
}

void PatientQueryForm::enableOutPatientNo(bool enabled)
{
    ui->OutPatient->setEnabled(enabled);
}

void PatientQueryForm::onAction(QAction *action)
{
    addAction(action);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link this signature
void PatientQueryForm::onPatient(QSharedPointer<QPatient>) { }

void PatientQueryForm::onInstancePK(qint64) { }

void PatientQueryForm::onDeleteThumbView() { }

void PatientQueryForm::getComboBox(const QString &) { }

void PatientQueryForm::getComboBoxIdx(int) { }

void PatientQueryForm::setDockWidget(QDockWidget *dockWidget)
{
    disconnect(dockConnection);
    dock = dockWidget;
    if (dock) {
        dockConnection =
            connect(dock, &QDockWidget::topLevelChanged, this, &PatientQueryForm::onTopLevelChanged);
    }
}

void PatientQueryForm::onTopLevelChanged(bool isFloating)
{
    if (dock && !isFloating) {
        removeTitleBar(dock);
    }
}

void PatientQueryForm::on_dockButton_clicked()
{
    if (dock && !dock->isFloating()) {
        setTitleBar(dock, nullptr);
        dock->setFloating(true);
    }
}

void PatientQueryForm::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!dock || childAt(event->pos()) != ui->PatientQueryLabel) {
        QWidget::mouseDoubleClickEvent(event);
    } else if (dock->isFloating()) {
        removeTitleBar(dock);
        dock->setFloating(false);
    } else {
        on_dockButton_clicked();
    }
}
