// clsVXProject: the identity of the open project (file name and place, source program,
// description, id).
#pragma once

#include <memory>
#include <string>

namespace velmar {

class clsVXProject {
 public:
  std::string FileName;
  std::string FileFolder;
  std::string FilePath;
  std::string LastModified;
  std::string Source;
  std::string Description;
  std::string ProjectID;

  std::shared_ptr<clsVXProject> CopyClass() const { return std::make_shared<clsVXProject>(*this); }
};

}  // namespace velmar
