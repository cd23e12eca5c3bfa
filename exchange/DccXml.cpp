// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DccXml.h"

#include <algorithm>
#include <cstddef>

#include "core/numbers/WrittenNumber.h"
#include "core/platform/Error.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"
#include "exchange/DecodedText.h"

namespace tarvell {

namespace {

constexpr std::string_view kDcc = "https://ptb.de/dcc";
constexpr std::string_view kSi = "https://ptb.de/si";

// Far above every certificate, and small enough to be read at once.
constexpr std::ptrdiff_t kTagLimit = 1'000'000;
constexpr std::ptrdiff_t kAttributeLimit = 2'000'000;
constexpr int kDeepest = 100;
constexpr std::size_t kNamespaceLimit = 64;

Error NoCertificate(const std::string& why) {
  return {ErrorKind::Type, "The file cannot be read as a certificate: " + why};
}

/// The encoding that the XML declaration names, in capitals; "" for none.
std::string DeclaredEncoding(std::string_view bytes) {
  constexpr std::string_view kName = "encoding";
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  const std::size_t name = declaration.find(kName);
  if (!declaration.starts_with("<?xml") || name == std::string_view::npos) {
    return {};
  }
  const std::string_view rest = declaration.substr(name + kName.size());
  const std::size_t begin = rest.find_first_of("\"'");
  if (begin == std::string_view::npos) {
    return {};
  }
  const std::string_view value = rest.substr(begin + 1);
  return ToUpper(value.substr(0, value.find_first_of("\"'")));
}

std::string AsUtf8(std::string_view bytes) {
  const std::string declared = DeclaredEncoding(bytes);
  if (declared == "ISO-8859-1" || declared == "WINDOWS-1252") {
    return DecodeFileText(bytes);
  }
  DecodedText decoded = Decoded(bytes);
  if (decoded.encoding != "UTF-8" && decoded.encoding != "UTF-16") {
    throw NoCertificate("its characters are not in " +
                        std::string(declared.empty() ? "UTF-8" : declared) +
                        ", as it says. Ask for the certificate again.");
  }
  return std::move(decoded.text);
}

void CheckSize(std::string_view text) {
  if (std::ranges::count(text, '<') > kTagLimit ||
      std::ranges::count(text, '=') > kAttributeLimit) {
    throw NoCertificate("it has more elements than any certificate.");
  }
}

std::size_t LineAt(std::string_view text, std::ptrdiff_t offset) {
  const auto end =
      std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0)), text.size());
  return 1 + static_cast<std::size_t>(std::ranges::count(text.substr(0, end), '\n'));
}

void Parse(const std::string& text, pugi::xml_document& document) {
  const pugi::xml_parse_result result = document.load_buffer(
      text.data(), text.size(), pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
  if (!result) {
    throw NoCertificate("line " + std::to_string(LineAt(text, result.offset)) +
                        " is not correct XML. Ask for the certificate again.");
  }
}

/// Gives the elements their names, from the root downwards, without recursion.
class Renaming {
 public:
  void Run(pugi::xml_node root) {
    pugi::xml_node node = root;
    int depth = 1;
    while (!node.empty()) {
      if (node.type() == pugi::node_element) {
        Take(node, depth);
      }
      if (!node.first_child().empty()) {
        node = node.first_child();
        if (++depth > kDeepest) {
          throw NoCertificate("its elements are nested deeper than in any certificate.");
        }
        continue;
      }
      while (node != root && node.next_sibling().empty()) {
        node = node.parent();
        --depth;
      }
      node = node == root ? pugi::xml_node() : node.next_sibling();
    }
  }

 private:
  /// A prefix that an element at this depth declares.
  struct Declared {
    int depth;
    std::string_view prefix;
    std::string_view uri;
  };

  void Take(pugi::xml_node node, int depth) {
    while (!declared_.empty() && declared_.back().depth >= depth) {
      declared_.pop_back();
    }
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const std::string_view name = attribute.name();
      if (name == "xmlns" || name.starts_with("xmlns:")) {
        declared_.push_back(
            {depth, name.substr(std::min<std::size_t>(name.size(), 6)), attribute.value()});
      }
    }
    if (declared_.size() > kNamespaceLimit) {
      throw NoCertificate("it declares more namespaces than any certificate.");
    }
    const std::string name = node.name();
    const std::string wanted = NameFor(name);
    if (wanted != name) {
      node.set_name(wanted.c_str());
    }
  }

  [[nodiscard]] std::string NameFor(std::string_view name) const {
    const std::size_t colon = name.find(':');
    const std::string_view prefix =
        colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
    const std::string local(colon == std::string_view::npos ? name : name.substr(colon + 1));
    const auto found = std::find_if(declared_.rbegin(), declared_.rend(),
                                    [&](const Declared& each) { return each.prefix == prefix; });
    const std::string_view uri = found == declared_.rend() ? std::string_view() : found->uri;
    return uri == kDcc ? "dcc:" + local : uri == kSi ? "si:" + local : local;
  }

  std::vector<Declared> declared_;
};

}  // namespace

std::vector<std::string> LoadDcc(std::string_view bytes, pugi::xml_document& document) {
  const std::string text = AsUtf8(bytes);
  CheckSize(text);
  Parse(text, document);
  const pugi::xml_node root = document.document_element();
  Renaming().Run(root);
  if (std::string_view(root.name()) != "dcc:digitalCalibrationCertificate") {
    throw NoCertificate("it is XML, but not a DCC. Its first element is " + Quoted(root.name()) +
                        ".");
  }
  std::vector<std::string> notes;
  const auto isDoctype = [](const pugi::xml_node& node) {
    return node.type() == pugi::node_doctype;
  };
  if (!document.find_child(isDoctype).empty()) {
    notes.emplace_back("The file declares entities. They were not resolved.");
  }
  if (!root.child("Signature").empty()) {
    notes.emplace_back("The certificate is signed. The signature was not checked.");
  }
  return notes;
}

std::string TextOf(pugi::xml_node node) {
  std::string text;
  for (const pugi::xml_node child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      text += child.value();
    }
  }
  return std::string(WithoutBlanks(text));
}

Names NamesOf(pugi::xml_node node) {
  constexpr std::size_t kLanguages = 30;
  Names names;
  for (const pugi::xml_node content : node.children("dcc:content")) {
    if (names.size() == kLanguages) {
      break;
    }
    names.push_back({Shortened(content.attribute("lang").value()), Shortened(TextOf(content))});
  }
  return names;
}

bool HasRefType(pugi::xml_node node, std::string_view word) {
  std::string_view words = node.attribute("refType").value();
  while (!words.empty()) {
    const std::size_t end = std::min(words.find(' '), words.size());
    if (words.substr(0, end) == word) {
      return true;
    }
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return false;
}

}  // namespace tarvell
