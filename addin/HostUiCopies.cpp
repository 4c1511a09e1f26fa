// The host's header leaves the copying of these three classes to each add-in, which exports it. The
// add-in itself never copies one.

#include "platform/Export.h"

#define HOSTUI_COPY_API QZ_EXPORT
#include "platform/HostUi.h"

UIDataTip::UIDataTip(const UIDataTip&) = default;
UIDataTip& UIDataTip::operator=(const UIDataTip&) = default;

UIErrorTip::UIErrorTip(const UIErrorTip&) = default;
UIErrorTip& UIErrorTip::operator=(const UIErrorTip&) = default;

CLongProcess::CLongProcess(const CLongProcess&) = default;
CLongProcess& CLongProcess::operator=(const CLongProcess&) = default;
