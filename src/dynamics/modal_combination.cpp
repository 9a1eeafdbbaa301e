#include "model/jx_struct.h"

/// Modal responses exist only after a response spectrum analysis, which the engine does not run yet: spectrumResults is
/// empty and so is the combined result.
void CjxStruct::CalcModalCombinationResult()
{
    if (spectrumResults.empty())
        return;
    throw jxException(L"Modal responses cannot be combined yet.");
}
