#include "host/viewer/unstoredsettings.h"

#include "host/settings/settings.h"
#include "host/viewer/messages.h"
#include "host/viewer/texts.h"

namespace host {

void UnstoredSettings::report_once() {
    if (is_reported_ || (!has_unstorable_ && !host_settings().has_unstored()))
        return;
    is_reported_ = true;
    messages_.add(tr("The choice cannot be stored in %1")
                      .arg(short_name(host_settings().path_of(menu_file))));
}

} // namespace host
