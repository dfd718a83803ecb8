#include "lists/Settings.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QSettings>
#include <filesystem>

#include "controls/QtText.h"
#include "core/Services.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

QString ownSpelling(const QStringList& names, const QString& wanted) {
  for (const QString& name : names)
    if (name.compare(wanted, Qt::CaseInsensitive) == 0) return name;
  return wanted;
}

// Names are found without regard to case and keep the spelling that they were stored with.
QString pathOf(QSettings& store, const std::string& section, const std::string& key) {
  const QString sectionName = ownSpelling(store.childGroups(), toQt(section));
  store.beginGroup(sectionName);
  const QString keyName = ownSpelling(store.childKeys(), toQt(key));
  store.endGroup();
  return sectionName + '/' + keyName;
}

// An application's file. Its name does without the letters' case, like every name here.
std::filesystem::path fileOf(const std::string& application) {
  return services().settingsFolder() / (fold(application) + ".ini");
}

// For its owner alone whatever the umask, from before anything stands in it.
void makePrivate(const std::filesystem::path& file) {
  const int made = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (made < 0) return;  // told when it is written
  fchmod(made, S_IRUSR | S_IWUSR);
  close(made);
}

}  // namespace

std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& defaultText) {
  QSettings store(toQt(fileOf(application).string()), QSettings::IniFormat);
  const QVariant value = store.value(pathOf(store, section, key));
  return value.isValid() ? fromQt(value.toString()) : defaultText;
}

void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& text) {
  const std::filesystem::path file = fileOf(application);
  std::error_code failed;
  std::filesystem::create_directories(file.parent_path(), failed);
  makePrivate(file);
  QSettings store(toQt(file.string()), QSettings::IniFormat);
  store.setValue(pathOf(store, section, key), toQt(text));
  store.sync();
  if (store.status() != QSettings::NoError)
    throw RuntimeError(ErrorNumber::pathNotFound,
                       "The settings cannot be stored in " + file.string());
}

}  // namespace bw
