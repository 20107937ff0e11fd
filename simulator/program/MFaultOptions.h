#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CStateFaults.h"
#include "simulator/program/COptionReader.h"

#include <QCommandLineOption>
#include <QList>

/// The options that make a printer misbehave.
namespace MFaultOptions {

/// All of them, with their help.
QList<QCommandLineOption> All();

/// What is to go wrong with the answers.
CFaultSettings ReadAnswers(COptionReader& p_objReader);
/// What is to go wrong with the state.
CStateFaults ReadState(COptionReader& p_objReader);

}  // namespace MFaultOptions
