// The options of a test, from nothing chosen: a test names only what matters to it.
#pragma once

#include "engine/conversion_options.h"

#include <string_view>

class OptionsBuilder {
public:
    // Check box checked, text typed.
    OptionsBuilder& Pages(std::wstring_view text) {
        m_options.pagesEnabled = true;
        m_options.pages = text;
        return *this;
    }
    OptionsBuilder& Resolution(std::wstring_view text) {
        m_options.resolutionEnabled = true;
        m_options.resolution = text;
        return *this;
    }
    OptionsBuilder& OutputFolder(std::wstring_view text) {
        m_options.outputFolderEnabled = true;
        m_options.outputFolder = text;
        return *this;
    }

    // Text typed, check box unchecked.
    OptionsBuilder& UncheckedPages(std::wstring_view text) {
        m_options.pages = text;
        return *this;
    }
    OptionsBuilder& UncheckedResolution(std::wstring_view text) {
        m_options.resolution = text;
        return *this;
    }
    OptionsBuilder& UncheckedOutputFolder(std::wstring_view text) {
        m_options.outputFolder = text;
        return *this;
    }

    OptionsBuilder& NoMetadata() {
        m_options.noMetadata = true;
        return *this;
    }
    OptionsBuilder& NoOutline() {
        m_options.noOutline = true;
        return *this;
    }
    OptionsBuilder& NoHyperlinks() {
        m_options.noHyperlinks = true;
        return *this;
    }
    OptionsBuilder& NoText() {
        m_options.noText = true;
        return *this;
    }
    OptionsBuilder& Lines() {
        m_options.lines = true;
        return *this;
    }
    OptionsBuilder& Monochrome() {
        m_options.monochrome = true;
        return *this;
    }
    OptionsBuilder& Extra(std::wstring_view text) {
        m_options.extraOptions = text;
        return *this;
    }

    // Implicit: a builder is taken wherever options are.
    operator ConversionOptions() const { return m_options; }  // NOLINT(google-explicit-constructor)

private:
    ConversionOptions m_options;
};
