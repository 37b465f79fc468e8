#pragma once

#include <QString>

/// What becomes of one attribute: of all that change, and of texts that stay.
struct AttributeChange
{
    enum class Kind : quint8 { Text, Items, Bytes };

    QString place; ///< the tag, behind those of the sequences that it is in, with the numbers of their items
    QString name; ///< the standard's, or empty
    Kind kind = Kind::Text;
    QString before; ///< of a text the first 4,000 characters; so in after
    qint64 amount = 0; ///< of items or bytes
    QString after;
    bool isRemoved = false;
    bool isKept = false; ///< a text that people wrote, and that stays as it is: somebody should read it
};
