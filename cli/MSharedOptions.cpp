#include "cli/MSharedOptions.h"

#include "cli/MArgumentKind.h"

void MSharedOptions::AddReach(CLI::App& p_objTable, double& p_dSeconds) {
    p_objTable
        .add_option("--reach", p_dSeconds,
                    "For how long a printer that does not answer is sought, from 0 to 3600; 60 "
                    "unless given.")
        ->type_name(MArgumentKind::Seconds);
}

void MSharedOptions::AddPause(CLI::App& p_objTable, double& p_dSeconds) {
    p_objTable
        .add_option("--pause", p_dSeconds,
                    "The pause between two answers, from 0 to 10; 1 unless given.")
        ->type_name(MArgumentKind::Seconds);
}

void MSharedOptions::AddState(CLI::App& p_objTable, std::string& p_strFolder) {
    p_objTable.add_option("--state", p_strFolder, "The folder of the journals.")
        ->type_name(MArgumentKind::Folder);
}
