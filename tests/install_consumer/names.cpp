// Built with nothing but the flags pkg-config gives: the umbrella header and
// the headers it pulls in must resolve with only include/ on the path.
#include <formwerk/Formwerk.h>

int main()
{
    return fw::cls_Formwerk::Names().empty() ? 1 : 0;
}
