// The resources of a program's file, by type and number, as the system's own functions find them.
#pragma once
#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

class ProgramResources {
public:
    // Throws driver::Failure, as every operation does, when there is nothing to read.
    explicit ProgramResources(const std::wstring& path);
    ~ProgramResources();
    ProgramResources(const ProgramResources&) = delete;
    ProgramResources& operator=(const ProgramResources&) = delete;

    // `type` is one of the system's RT_ values. Numbers in rising order; a named resource counts as -1.
    [[nodiscard]] std::vector<int> Ids(const wchar_t* type) const;
    [[nodiscard]] std::vector<WORD> Languages(const wchar_t* type, int id) const;
    // Valid as long as this object.
    [[nodiscard]] std::string_view Bytes(const wchar_t* type, int id) const;

private:
    HMODULE m_module;
};

// Reads values one after another out of a resource.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : m_bytes(bytes) {}

    [[nodiscard]] std::size_t Position() const noexcept { return m_position; }
    [[nodiscard]] bool AtEnd() const noexcept { return m_position >= m_bytes.size(); }

    template <class Value>
    Value Take() {
        Value value;
        Copy(&value, sizeof value);
        return value;
    }
    std::wstring TakeText(std::size_t length);
    std::wstring TakeTerminatedText();
    void Skip(std::size_t bytes) noexcept { m_position += bytes; }
    void AlignTo4() noexcept { m_position = (m_position + 3) & ~std::size_t{3}; }

private:
    void Copy(void* target, std::size_t bytes);

    std::string_view m_bytes;
    std::size_t m_position = 0;
};
