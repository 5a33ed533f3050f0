// A message box with the system's text for an error number.
#ifndef ORVAN_KEYS_SYSTEM_ERROR_BOX_H
#define ORVAN_KEYS_SYSTEM_ERROR_BOX_H

// Shows the system's text for `error` under the title "Error <error>", with
// an information icon and one OK button.
void ShowSystemErrorBox(int error);

#endif
