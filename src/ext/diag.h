// The diagnostic log and the diagnostic message boxes.
#pragma once

namespace vel {

// Records one message in the log and in a message box, as far as the settings ask for it. Never
// fails: a log that cannot be opened drops the message.
void vel_diag(const char *message);

} // namespace vel
