// Built with nothing but the flags pkg-config gives.
#include <core/cls_Formwerk.h>

int main()
{
    return fw::cls_Formwerk::Names().empty() ? 1 : 0;
}
