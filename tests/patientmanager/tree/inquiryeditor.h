#pragma once

#include "advancedinquiryform.h"
#include "inquirycondition.h"
#include "inquirysaveform.h"
#include "kivmessageboxform.h"
#include "temporaryindex.h"

#include <QComboBox>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTreeView>

/// An index whose inquiries are those of the test alone, and the editor on them. Questions and warnings are
/// counted and answered.
class Editor
{
public:
    Editor();
    ~Editor();
    Editor(const Editor &) = delete;
    Editor &operator=(const Editor &) = delete;

    void store(const QString &name, const InquiryConditions &conditions) const;
    void open(const QString &name = QString());

    template <typename Widget>
    Widget *part(const char *name) const
    {
        return form->findChild<Widget *>(QLatin1String(name));
    }
    QTreeView *tree() const { return part<QTreeView>("conditionView"); }
    QComboBox *box() const { return part<QComboBox>("inquiryBox"); }
    void click(const char *button) const;
    void clickRow(const char *list, int row, bool twice = false) const;
    /// The window that asks for a name; null where there is none in sight.
    static InquirySaveForm *saveForm();
    /// As the user picks in the combo box.
    void pick(int entry) const;

    QModelIndex cell(int group, int row, int column) const;
    QString text(int group, int row) const;
    int conditions(int group) const;
    /// The inquiry as it is stored, in row order.
    QStringList stored(const QString &name) const;

    const TemporaryIndex index;
    QPointer<AdvancedInquiryForm> form;
    int questions = 0;
    int warnings = 0;
    int answer = kivMessageBoxForm::AnswerCancel;
};

namespace InquiryEditorNames {

InquiryCondition condition(const QString &group, const QString &field, const QString &value);

const QString patient = QStringLiteral("patient");
const QString image = QStringLiteral("imageformat");
const QString sex = QStringLiteral("PatientSex");

} // namespace InquiryEditorNames
