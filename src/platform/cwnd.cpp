#include "platform/cwnd.h"

/// Here, so that the table of virtual functions has one home: a host that derives from CWnd finds it in this library.
CWnd::~CWnd() = default;
