#include "controls/ctl_Executor.h"

namespace fw {

ctl_Executor::ctl_Executor(Form& form, const QString& name)
    : Control(form, name, QStringLiteral("ctl_Executor"), nullptr)
{
}

void ctl_Executor::Execute(const QString& script)
{
    raise(Script, script);
}

} // namespace fw
