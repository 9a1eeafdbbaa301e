#include "analyses.h"

#include <algorithm>
#include <filesystem>

#include "dynamics/response_spectrum_manager.h"
#include "platform/file_error.h"
#include "platform/wide_path.h"

namespace qvx::app {

Analyses AnalysesOf(const std::vector<std::string>& names)
{
    Analyses analyses;
    for (const std::string& name : names) {
        if (name == "static")
            analyses.isStatic = true;
        else if (name == "frequency")
            analyses.hasModes = true;
        else if (name == "spectrum")
            analyses.hasSpectra = analyses.hasModes = analyses.isStatic = true;
        else if (name == "concrete")
            analyses.hasConcrete = analyses.isStatic = true;
        else if (name == "steel")
            analyses.hasSteel = analyses.isStatic = true;
        else
            throw FileError("", "--analysis " + name, "no such analysis");
    }
    return analyses;
}

int RunAnalyses(const Analyses& analyses, CjxStruct& model)
{
    if (analyses.hasSpectra)
        model.bPerformSpectrum = 1;
    int done = 1;
    if (analyses.hasModes)
        done = model.ExecuteFrequency(false);
    if (done != 0 && analyses.hasSpectra)
        model.ConvertInertiaForces();
    if (done != 0 && analyses.isStatic)
        done = model.ExecuteStatic();
    if (done != 0 && analyses.hasConcrete)
        done = model.ExecuteConcreteDesign();
    if (done != 0 && analyses.hasSteel)
        done = model.ExecuteSteelDesign();
    if (model.bInSolution != 0)  // modes without masses, or a design that its check refused
        model.RestoreInputData();
    return done;
}

void ApplySpectra(const std::string& file, CjxStruct& model)
{
    if (file.empty())
        return;
    if (!std::filesystem::is_regular_file(file))
        throw FileError(file, "", "cannot be read");
    CResponseSpectrumManager& library = CResponseSpectrumManager::Instance();
    if (library.LoadFile(CString(TextOf(file))) == 0)
        throw FileError(file, "", "holds no list of spectra, or one without points");
    const std::vector<jxSpectrum>& spectra = library.GetSpectra();
    const bool isNamed = std::any_of(std::begin(model.spectra), std::end(model.spectra),
                                     [](const jxSpectrum& spectrum) { return spectrum.name[0] != L'\0'; });
    for (std::size_t direction = 0; direction < 3; ++direction) {
        jxSpectrum& spectrum = model.spectra[direction];
        if (!isNamed) {
            const std::size_t index = spectra.size() == 1 ? 0 : direction;
            spectrum = index < spectra.size() ? spectra[index] : jxSpectrum();
        } else if (spectrum.name[0] != L'\0' &&
                   !library.FindSpectrum(spectrum, library.FindSpectrum(CString(spectrum.name)))) {
            throw FileError(file, "", "has no spectrum named \"" + ToUtf8(spectrum.name) + "\"");
        }
    }
}

}  // namespace qvx::app
