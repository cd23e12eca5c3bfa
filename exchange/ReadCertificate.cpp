// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ReadCertificate.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "core/files/ReadFile.h"
#include "core/numbers/WrittenNumber.h"
#include "core/platform/Error.h"
#include "exchange/CsvCertificate.h"
#include "exchange/DccCertificate.h"
#include "exchange/DecodedText.h"
#include "exchange/TableParts.h"

namespace tarvell {

namespace {

struct OtherKind {
  std::string_view beginning;
  std::string_view text;
};

constexpr std::array<OtherKind, 6> kOtherKinds = {
    {{"PK\x03\x04", "The file is a workbook or an archive. Save its table as CSV, then try again."},
     {"\xD0\xCF\x11\xE0", "The file is a workbook. Save its table as CSV, then try again."},
     {"%PDF",
      "The file is a PDF. Ask the laboratory for the DCC file (XML) of this certificate, or for a "
      "table as CSV."},
     {"\x30\x82",
      "The file is a certificate inside a signature. Take the certificate out of it with the "
      "program that checks the signature, then try again."},
     {"\x30\x83",
      "The file is a certificate inside a signature. Take the certificate out of it "
      "with the program that checks the signature, then try again."},
     {"-----BEGIN",
      "The file is a certificate inside a signature. Take the certificate out of it "
      "with the program that checks the signature, then try again."}}};

/// Throws a Type error for JSON, which would be read as lines of texts.
void RefuseJson(std::string_view beginning) {
  if (!WithoutBlanks(beginning).starts_with('{')) {
    return;
  }
  const bool isExport = beginning.find("\"tarvell-data-set\"") != std::string::npos;
  throw Error(ErrorKind::Type,
              isExport ? "The file is a data set that was exported as JSON, for other programs. "
                         "Export the data set as CSV, which can be imported again."
                       : "The file is JSON, which is not a kind of certificate. Ask for the DCC "
                         "file (XML) of this certificate, or for a table as CSV.");
}

/// Whether the text begins with "<" after blanks.
bool IsXml(std::string_view beginning) {
  return WithoutBlanks(beginning).starts_with('<');
}

}  // namespace

std::string CertificateBytes(const std::filesystem::path& path) {
  std::string bytes;
  const std::error_code error = ReadNativeFile(path, bytes, kCertificateLimit);
  if (error == kTooLargeForData) {
    throw Error(ErrorKind::Type,
                "The file is larger than 64 MiB, which no certificate is. Choose another file.",
                path.string());
  }
  if (error == std::errc::is_a_directory) {
    throw Error(ErrorKind::NotAFile, "This is a folder. Choose the file of the certificate in it.",
                path.string());
  }
  if (error) {
    throw SystemError(error, "read the file", path.string());
  }
  return bytes;
}

Certificate ReadCertificate(std::string_view bytes, const ReadingChoices& choices) {
  const auto* other = std::ranges::find_if(
      kOtherKinds, [&](const OtherKind& kind) { return bytes.starts_with(kind.beginning); });
  if (other != kOtherKinds.end()) {
    throw Error(ErrorKind::Type, std::string(other->text));
  }
  if (WithoutBlanks(bytes.substr(0, kCertificateLimit)).empty()) {
    throw Error(ErrorKind::Type, "The file is empty. Choose another file.");
  }
  constexpr std::size_t kBeginning = 256;
  const std::string beginning = Decoded(bytes.substr(0, kBeginning)).text;
  RefuseJson(beginning);
  Certificate certificate =
      IsXml(beginning) ? DccCertificate(bytes) : CsvCertificate(bytes, choices);
  DivideTables(certificate);
  return certificate;
}

}  // namespace tarvell
