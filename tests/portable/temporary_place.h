// The only folder in which the tests make files: one of our own in the system's temporary folder, handed to
// them as theirs. It shows what they leave behind, and is removed at the end.
#pragma once
#include <string>
#include <vector>

class TemporaryPlace {
public:
    TemporaryPlace();
    ~TemporaryPlace();
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;

    // Its contents, by name; they are removed.
    [[nodiscard]] std::vector<std::wstring> TakeLeftovers() const;

private:
    std::wstring m_path;
};
