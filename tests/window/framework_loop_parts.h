// Filters and idle handlers that write down when they are asked.
#pragma once

#include "framework/message_loop.h"

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

using Record = std::vector<std::string>;

inline std::string Hex(UINT message) {
    char text[8];
    ::wsprintfA(text, "%03X", message);
    return text;
}

class Filter final : public CMessageFilter {
public:
    Filter(Record& record, std::string name, bool consumes = false)
        : m_record(record), m_name(std::move(name)), m_consumes(consumes) {}
    bool FilterMessage(MSG& message) override {
        m_record.push_back(m_name + ' ' + Hex(message.message));
        return m_consumes;
    }

private:
    Record& m_record;
    const std::string m_name;
    const bool m_consumes;
};

class IdleHandler final : public CIdleHandler {
public:
    IdleHandler(Record& record, std::string name, bool result = false)
        : m_record(record), m_name(std::move(name)), m_result(result) {}
    bool HandleIdle() override {
        m_record.push_back(m_name);
        return m_result;
    }

private:
    Record& m_record;
    const std::string m_name;
    const bool m_result;
};

inline MSG Message(UINT id) {
    MSG message = {};
    message.message = id;
    return message;
}
