#include "platform/cwnd.h"

CWnd::~CWnd() = default;
