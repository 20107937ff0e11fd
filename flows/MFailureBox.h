#pragma once

#include "link/CFailure.h"
#include "platform/IMessageBox.h"

/// How a person is told of a failure: one row a failure.
namespace MFailureBox {

/// What is done the moment a failure happens: the beep and the box of its row, where it has them.
void ShowAtOnce(const CFailure& p_objFailure, IMessageBox& p_objMessageBox);

/// What the handler shows whose command has failed: the failure's text with the exclamation icon;
/// nothing for a failure that has been shown already or has no words.
void ShowByHandler(const CFailure& p_objFailure, IMessageBox& p_objMessageBox);

/// The words that the handler shows; empty when it shows nothing.
std::string HandlerText(const CFailure& p_objFailure);

}  // namespace MFailureBox
