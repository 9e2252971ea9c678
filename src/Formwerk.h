#pragma once
// What a host needs to show a dialog: the factory, the host records it fills
// (DialogContext) and the Context every dialog form carries. The desktop host
// is the default CoreDev and needs no installing; a host's own CoreDev comes
// from <formwerk/host/CoreDev.h>. Qt's QApplication is the host's to make.

#include "core/HasContext.h"
#include "core/cls_Formwerk.h"
