// The SMTP dialogue of one mail over an open connection: HELO, MAIL FROM,
// RCPT TO for each recipient, DATA with the dot-stuffed message, QUIT.
#pragma once

#include <iostream>
#include <string>

#include "email/message.h"
#include "email/smtp_reply.h"

namespace email {

// Hands `message` to the server at the other end of `stream`, which has
// just been connected to it. `server` is the server's text, for messages;
// `heloName` is what the client says in HELO.
//
// Gives true when the server took the message, also when some (not all)
// recipients were refused or QUIT failed; false after any other refusal,
// without a QUIT. Every refusal and the success are told through `log`.
// Raises what writing the message raises (error::Exception and derived
// classes); the caller closes the connection in any case.
bool smtp_dialogue(std::iostream& stream, const std::string& server, const std::string& heloName,
                   Message& message, const SmtpLog& log);

}  // namespace email
