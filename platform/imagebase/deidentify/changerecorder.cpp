#include "changerecorder.h"

#include "datasetitems.h"

namespace {

/// What people wrote, which may say anything even where nothing was found in it.
bool isFreeText(DcmElement &element)
{
    return ElementText::isText(element.getVR()) && !DatasetItems::isCode(ElementText::tagOf(element));
}

} // namespace

AttributeChange ChangeRecorder::before(DcmElement &element, const QString &path)
{
    AttributeChange change;
    if (!m_isOn) {
        return change;
    }
    change.place = path
        + QStringLiteral("(%1,%2)")
              .arg(element.getGTag(), 4, 16, QLatin1Char('0'))
              .arg(element.getETag(), 4, 16, QLatin1Char('0'));
    change.name = QString::fromLatin1(DcmTag(element.getTag().getXTag()).getTagName())
                      .remove(QLatin1String("RETIRED_"));
    if (DcmSequenceOfItems *sequence = DatasetItems::sequenceOf(&element)) {
        change.kind = AttributeChange::Kind::Items;
        change.amount = qint64(sequence->card());
    } else if (element.isaString() && element.getLengthField() <= ElementText::longest) {
        change.before = m_texts.decoded(ElementText::of(element));
    } else {
        change.kind = AttributeChange::Kind::Bytes;
        change.amount = element.getLengthField();
    }
    return change;
}

void ChangeRecorder::add(AttributeChange change, DcmElement *after)
{
    constexpr int mostCharacters = 4000;
    if (!m_isOn) {
        return;
    }
    const bool isText = change.kind == AttributeChange::Kind::Text;
    change.isRemoved = !after;
    if (after && after->isaString()) {
        change.after = m_texts.decoded(ElementText::of(*after));
    }
    const bool isSame =
        after && (isText ? change.before == change.after : !after->isEmpty() && change.amount > 0);
    change.isKept = isSame && isText && !change.before.isEmpty() && isFreeText(*after);
    const bool isAny = isText || change.amount > 0;
    if (change.isKept || (!isSame && isAny)) {
        change.before.truncate(mostCharacters);
        change.after.truncate(mostCharacters);
        m_changes.append(std::move(change));
    }
}

QString ChangeRecorder::within(const QString &sequence, int number) const
{
    return m_isOn ? sequence + QStringLiteral("[%1] › ").arg(number) : QString();
}
