#pragma once

#include <QString>
#include <QStringList>

namespace orva {

// The per-user data folder (XDG_DATA_HOME honoured), made when missing. It is
// the program's application folder: calendar.cal and the
// data files that ship with the program live here.
QString app_folder();

// The data files the program ships, copied into the application folder when
// they are missing there. Files not yet shipped are passed over.
QStringList shipped_data_files();
void install_shipped_data(const QString& app_path);

// app_path + "/calendar.cal": the first calendar is always this one.
QString first_calendar_path(const QString& app_path);

} // namespace orva
