#include "platform/native/user/dialog_template.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    DialogTemplate dialog;
    if (ReadDialogTemplate(data, size, &dialog))
        Check(dialog.controls.size() <= 255);
    return 0;
}
