#pragma once

#include <QString>

/**
 * Which floor of the project may include which: the one place where the layering is written down as code.
 * A floor is a path below the project: "platform/imagebase", "patientmanager/tables", "workstation".
 */
namespace IncludeRule {

/// The floor that a file belongs to, from its path below the project; empty where no rule holds for it.
QString floorOf(const QString &file);

/// @param file, header: paths below the project, of the file that includes and of what it includes
bool allows(const QString &file, const QString &header);

/// @param module a Qt module by its folder of headers, such as "QtWidgets"
bool allowsQtModule(const QString &floor, const QString &module);

} // namespace IncludeRule
