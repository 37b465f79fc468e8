#include "inquiryproblemtext.h"

#include <QCoreApplication>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(InquiryProblemText)
};

/// What a condition of some field says wrongly.
QString sentence(InquiryProblem::Kind kind)
{
    switch (kind) {
    case InquiryProblem::Kind::None:
        break;
    case InquiryProblem::Kind::NotStored:
        return Text::tr("There is no stored inquiry \"%1\".");
    case InquiryProblem::Kind::NoCondition:
        return Text::tr("The inquiry has no condition that names a field.");
    case InquiryProblem::Kind::UnknownGroup:
        return Text::tr("The inquiry asks for \"%1\", which is no kind of record.");
    case InquiryProblem::Kind::UnknownField:
        return Text::tr("The inquiry asks for a field \"%1\" that the records do not have.");
    case InquiryProblem::Kind::UnknownSymbol:
        return Text::tr("The inquiry compares %2 by \"%1\", which is no comparison.");
    case InquiryProblem::Kind::UnknownLogic:
        return Text::tr("The inquiry joins %2 to the next condition by \"%1\" instead of \"and\" or \"or\".");
    case InquiryProblem::Kind::UnknownQueryType:
        return Text::tr("The inquiry asks for %2 by \"%1\" instead of \"Precise\" or \"Fuzzy\".");
    case InquiryProblem::Kind::NotANumber:
        return Text::tr("The inquiry compares %2, which holds numbers, with \"%1\".");
    case InquiryProblem::Kind::NotADate:
        return Text::tr("The inquiry compares %2, which holds dates or times, with \"%1\".");
    case InquiryProblem::Kind::Database:
        return Text::tr("The inquiry failed: %1");
    }
    return {};
}

/// Short enough for a tool tip and a status bar.
QString shortened(const QString &text)
{
    constexpr int longest = 200;
    return text.size() <= longest ? text : text.left(longest) + QChar(0x2026);
}

} // namespace

QString inquiryProblemText(const InquiryProblem &problem)
{
    const QString text = sentence(problem.kind);
    if (text.contains(QLatin1String("%2"))) {
        return text.arg(shortened(problem.text), shortened(problem.field));
    }
    return text.contains(QLatin1String("%1")) ? text.arg(shortened(problem.text)) : text;
}
