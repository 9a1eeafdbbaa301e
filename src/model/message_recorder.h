#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// One call of the message channel.
struct RecordedMessage
{
    enum Kind { ListLine, StatusLine, LogEntry };

    Kind kind = LogEntry;
    std::wstring text;
    std::wstring status;
};

/// Holds back what a model says while it lives, so that work can be done out of the order in which it is told.
class MessageRecorder
{
public:
    explicit MessageRecorder(CjxStruct& model) : model_(model), outer_(model.recording_)
    {
        model_.recording_ = &messages_;
    }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
    ~MessageRecorder() { model_.recording_ = outer_; }

    const std::vector<RecordedMessage>& Messages() const { return messages_; }

    /// Says now what was held back.
    static void Replay(CjxStruct& model, const std::vector<RecordedMessage>& messages);

private:
    CjxStruct& model_;
    std::vector<RecordedMessage>* outer_;
    std::vector<RecordedMessage> messages_;
};

}  // namespace qvx
