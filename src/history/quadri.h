#pragma once
// The public-sector declaration NZINPD<year>.MDB.

namespace NZRetMesINPDAP {

void prepare_name();
[[nodiscard]] bool archive_exists();
void open_archive();
void close_archive();
void update_declaration();

}  // namespace NZRetMesINPDAP
