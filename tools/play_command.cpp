#include <chrono>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "client/json_lines.h"
#include "client/record_stream.h"
#include "client/summary.h"
#include "tools/commands.h"
#include "tools/machine.h"
#include "tools/output_folder.h"
#include "tools/player.h"
#include "tools/png_file.h"

namespace tools {

using namespace koru::client;

namespace {

    // The records as they come: raw, as JSON, and counted.
    class RecordFiles {
    public:
        RecordFiles(const std::string& rawPath, const std::string& jsonPath)
            : raw_(rawPath, std::ios::binary)
            , json_(jsonPath)
            , stream_(raw_)
        {
        }

        void Take(const BYTE* record, ULONG length, LONG flag)
        {
            const std::span bytes(reinterpret_cast<const std::byte*>(record), length);
            stream_.Write(bytes, flag);
            json_ << JsonLine(bytes, flag) << '\n';
            summary_.Add(bytes);
        }

        void Close()
        {
            raw_.close();
            json_.close();
            if (!raw_ || !json_)
                throw std::runtime_error("the records cannot be written");
        }

        const Summary& Counts() const { return summary_; }

    private:
        std::ofstream raw_, json_;
        StreamWriter stream_;
        Summary summary_;
    };

    void PrintReport(const Player& player, const Summary& summary, double seconds)
    {
        std::cout << summary.Table();
        if (!player.Skipped().empty())
            std::cout << "\nmetafile records not handled:\n";
        for (const auto& [record, count] : player.Skipped())
            std::cout << "  " << record << "  " << count << '\n';
        std::cout << '\n' << player.DrawingsPlayed() << " drawings in " << seconds << " s\n";
    }

    double SecondsSince(std::chrono::steady_clock::time_point start)
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

} // namespace

void Play(const Session& session, const PlayOptions& options)
{
    const auto start = std::chrono::steady_clock::now();
    OutputFolder folder(options.out);
    RecordFiles records(folder.PathFor("records.koru"), folder.PathFor("records.jsonl"));
    Machine machine({{session.width, session.height, session.depth}, options.image});
    machine.InstallConsumer(
        [&records](const BYTE* record, ULONG length, LONG flag) { records.Take(record, length, flag); });
    Player player(machine);
    player.Run(session);

    folder.Write("real-screen.png", EncodePng(machine.RealScreen()));
    folder.Write("virtual-screen.png", EncodePng(machine.VirtualScreen()));
    records.Close();
    machine.Engine().CheckGuards();
    if (!machine.Violations().empty())
        throw std::runtime_error("the engine objects: " + machine.Violations().front());
    folder.Finish();
    if (!options.quiet)
        PrintReport(player, records.Counts(), SecondsSince(start));
}

} // namespace tools
