/* A catalogue of the test's own, for a library whose files lie in the test's folder. */
#pragma once

#include "ui/TranslationCatalogue.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

#include "support/DeviceTest.h"

class Catalogue : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        modulePath = PathOf(TEXT("Lib.dll"));
    }

    void TearDown() override {
        // What a catalogue of these tests has not found is not to be harvested for real.
        catalogue.WriteUntranslatedFile({}, PathOf(TEXT("nowhere")));
        DeviceTest::TearDown();
    }

    static void PutLanguage(const WideString& name, std::string_view records) {
        PutFile(PathOf(TEXT("Lib.") + name + TEXT(".txt")), records);
    }

    bool SetLanguage(const WideString& name) { return catalogue.SetLanguage(name, modulePath); }

    using Texts = std::set<WideString>;

    WideString modulePath;
    TranslationCatalogue catalogue;
};
