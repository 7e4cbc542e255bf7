#pragma once
// Runs of the program on a copy of the demo installation.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "installation/demo.h"
#include "installation/installation.h"
#include "nzutil/process.h"
#include "platform/file_system.h"
#include "tests/support/temp_directory.h"

namespace test_support {

class DemoRun : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        demo = new TempDirectory();
        nzutil::make_demo_installation(demo->file("demo")).close();
    }
    static void TearDownTestSuite() {
        delete demo;
        demo = nullptr;
    }
    void SetUp() override { nzutil::copy_installation(demo->file("demo"), root()).close(); }

    [[nodiscard]] std::string root() const { return directory.file("prova"); }
    [[nodiscard]] nzutil::Installation installation() const {
        return nzutil::Installation::open(root());
    }
    [[nodiscard]] std::string path(int file) const { return installation().path(file); }
    [[nodiscard]] std::string archive() const { return root() + "/archivi"; }

    [[nodiscard]] static std::string bytes(const std::string& file) {
        return platform::read_whole_file(file);
    }
    static void write(const std::string& file, const std::string& content) {
        std::ofstream(file, std::ios::binary) << content;
    }

    /// All files of a directory, by name.
    [[nodiscard]] static std::map<std::string, std::string> snapshot_of(const std::string& place) {
        std::map<std::string, std::string> files;
        for (const std::filesystem::directory_entry& entry :
             std::filesystem::recursive_directory_iterator(place)) {
            if (entry.is_regular_file()) {
                files[entry.path().filename().string()] = bytes(entry.path().string());
            }
        }
        return files;
    }
    [[nodiscard]] std::map<std::string, std::string> snapshot() const {
        return snapshot_of(archive());
    }
    /// Puts the archive back as it was made, with the selection it has now.
    void restore() const {
        const std::vector<std::pair<int, int>> selection = installation().read_selection();
        std::filesystem::remove_all(root());
        nzutil::copy_installation(demo->file("demo"), root()).close();
        installation().write_selection(selection);
    }

    [[nodiscard]] nzutil::ProcessCall call(const std::string& name = "run") const {
        std::filesystem::create_directories(directory.file(name));
        return {VELMOR_PROGRAM,
                {},
                {{"SOLMAREL_REGISTRO", root() + "/registro.ini"},
                 {"PRIMULAX", directory.file("primulax")},
                 {"VELMOR_INTERFACCIA", "console"},
                 {"VELMOR_RISPOSTE", "no"},
                 {"VELMOR_TASK", ""}},
                directory.file(name)};
    }
    [[nodiscard]] nzutil::ProcessResult run() const { return nzutil::run_process(call()); }

    inline static TempDirectory* demo = nullptr;
    TempDirectory directory;
};

}  // namespace test_support
