#include "elements/member/timber_sections.h"

void load_nds_sections(std::map<CString, jxSect_NDS>& sections)
{
    sections.clear();
}
