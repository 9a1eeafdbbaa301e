#include "support/model_log.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <regex>
#include <sstream>

#include <unistd.h>

namespace qvx::test {

TemporaryFile::TemporaryFile(const std::string& ending)
{
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("qvx_test_" + std::to_string(getpid()) + "_" + std::to_string(counter++) + ending);
}

TemporaryFile::~TemporaryFile()
{
    std::error_code error;
    std::filesystem::remove(path_, error);
}

std::string TemporaryFile::Text() const
{
    std::ostringstream text;
    text << std::ifstream(path_, std::ios::binary).rdbuf();
    return text.str();
}

void TemporaryFile::Write(const std::string& text) const
{
    std::ofstream(path_, std::ios::binary) << text;
}

ModelLog::ModelLog(CjxStruct& model) : model_(model)
{
    model_.fileLog.open(file_.Path());
}

std::string ModelLog::Text()
{
    model_.fileLog.flush();
    return file_.Text();
}

std::vector<std::string> ModelLog::Entries()
{
    static const std::regex kStamp(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\]: )");
    const std::string text = Text();
    std::vector<std::string> entries;
    const std::sregex_token_iterator end;
    for (std::sregex_token_iterator at(text.begin(), text.end(), kStamp, -1); at != end; ++at)
        entries.push_back(*at);
    if (!entries.empty())
        entries.erase(entries.begin());  // what stands before the first stamp: nothing
    for (std::string& entry : entries)
        if (!entry.empty() && entry.back() == '\n')
            entry.pop_back();
    return entries;
}

bool ModelLog::Has(const std::string& entry)
{
    const std::vector<std::string> entries = Entries();
    return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

}  // namespace qvx::test
