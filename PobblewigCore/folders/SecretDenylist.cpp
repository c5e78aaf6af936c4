#include "folders/SecretDenylist.h"

namespace pobblewig {

namespace {

constexpr QStringView secretFiles[] = {
    // Keys and key stores
    u"*id-rsa*", u"*id-dsa*", u"*id-ecdsa*", u"*id-ed25519*", u"*-rsa", u"*-ecdsa", u"*-ed25519",
    u"ssh-host-*", u"*.pem", u"*.key", u"*.p8", u"*.p12", u"*.pfx", u"*.pkcs12", u"*.jks", u"*.jwk",
    u"*.jwks", u"*.keystore", u"*.ppk", u"*.asc", u"*.gpg", u"*.pgp", u"*.age", u"*.agekey",
    u"keys.txt", u"*.keytab", u"*.ovpn", u"*.psk", u"wg*.conf", u"secring.*", u"privkey*",
    u"utc--*", u"wallet.dat", u"*.wallet", u"seed-phrase*",
    // Environment files, and settings that contain passwords
    u".env*", u"*.env", u"*.env.*", u".flaskenv", u"environ", u"environment", u"*.tfvars",
    u"*.tfvars.json", u"*.tfstate", u"*.tfstate.*", u".npmrc", u".yarnrc*", u".pypirc",
    u".dockercfg", u".dockerconfigjson", u".my.cnf", u".mylogin.cnf", u".s3cfg", u".boto",
    u".terraformrc", u"kubeconfig*", u"*.kubeconfig", u"rclone.conf", u".msmtprc", u"msmtprc",
    u".fetchmailrc", u".mbsyncrc", u".offlineimaprc", u"wpa-supplicant*.conf", u"*.nmconnection",
    u"wp-config.php", u"sitemanager.xml", u"recentservers.xml", u"filezilla.xml", u"*.remmina",
    u"settings-security.xml", u"hosts.yml", u"gradle.properties", u"nuget.config", u"pip.conf",
    u".hgrc",
    // Credentials
    u"*credentials*", u".secret*", u"*client-secret*", u"service-account*.json",
    u"serviceaccount*.json", u"*-adminsdk-*.json", u"auth.json", u".netrc", u"-netrc",
    u".authinfo*", u".pgpass", u"pgpass.conf", u"passwd", u"shadow", u"gshadow", u"*htpasswd",
    // Tokens and sessions
    u".token*", u"*access-token*", u"*refresh-token*", u"oauth*.json", u"*.session", u"krb5cc-*",
    u".xauthority", u".iceauthority", u"cookie",
    // Browsers
    u"cookies", u"cookies-journal", u"*cookies.sqlite*", u"cookies.txt", u"cookies.json",
    u"*-cookies.json", u"cookies.binarycookies", u"login-data*", u"web-data*", u"local-state",
    u"history", u"history-journal", u"history.db*", u"top-sites*", u"visited-links",
    u"trust-tokens*", u"logins.json", u"logins-backup.json", u"logins.csv", u"key3.db", u"key4.db",
    u"cert8.db", u"cert9.db", u"signons.sqlite", u"signedinuser.json", u"formhistory.sqlite*",
    u"places.sqlite*", u"webappsstore.sqlite*", u"sessionstore*", u"*.jsonlz4",
    // Password managers and keyrings
    u"*.kdb", u"*.kdbx", u"*.keyring", u"*.kwl", u"*.keychain", u"*.keychain-db", u"*.opvault",
    u"*.agilekeychain", u"*.1pif", u"*.1pux", u"*.psafe3", u"*.enpassdb", u"*.enpasskey",
    u"bitwarden*.json", u"bitwarden*.csv", u"lastpass*.csv", u"1password*.csv", u"dashlane*.csv",
    u"keepass*.csv", u"keepass*.xml", u"*.andotp", u"aegis*.json", u"otpauth*",
    // Histories of shells and other prompts
    u".*history*", u"*-history", u".histfile", u".zhistory", u".lesshst", u".viminfo",
    u"consolehost-history.txt"
};

constexpr QStringView secretWords[] = { u"password", u"passwords", u"passwd", u"passphrase",
    u"passphrases", u"credentials", u"creds", u"secret-key", u"secretkey", u"secret-keys",
    u"encryption-key", u"access-key", u"accesskey", u"access-keys", u"api-key", u"apikey",
    u"api-keys", u"apikeys", u"api-token", u"api-tokens", u"recovery-codes", u"recovery-phrase",
    u"backup-codes", u"seed-phrase", u"wallet-seed", u"client-secret" };

constexpr QStringView secretLastWords[] = { u"private-key", u"private-keys", u"privatekey",
    u"credential", u"cred", u"secret", u"secrets", u"token", u"tokens", u"recovery-code",
    u"backup-code", u"seed-words" };

constexpr QStringView copyWords[] = { u"copy", u"backup", u"old", u"new", u"list", u"export" };

constexpr QStringView secretFolders[] = { u".ssh", u".gnupg", u".aws", u".azure", u"gcloud",
    u".gcloud", u".kube", u".docker", u".terraform.d", u".oci", u".vault", u".sops", u".pki",
    u".putty", u".subversion", u".git", u".hg", u".m2", u".purple", u".secrets", u"secrets",
    u".credentials", u"credentials", u"private-keys-v1.d", u".password-store", u"keyrings",
    u"keychains", u"kwalletd", u"keepassxc", u"bitwarden", u"bitwarden-cli", u".1password",
    u"1password", u".op", u".lpass", u".lastpass", u"enpass", u"*.opvault", u"*.agilekeychain",
    u".mozilla", u".librewolf", u"google-chrome*", u"bravesoftware", u"microsoft-edge*",
    u"local-storage", u"session-storage", u"indexeddb", u"local-extension-settings", u".bitcoin",
    u".ethereum", u".electrum", u".monero" };

constexpr QStringView copies[] = { u"~", u"-", u".bak", u".backup", u".old", u".orig", u".save",
    u".swp", u".tmp", u".copy" };

} // namespace

std::span<const QStringView> SecretDenylist::files()
{
    return secretFiles;
}

std::span<const QStringView> SecretDenylist::words()
{
    return secretWords;
}

std::span<const QStringView> SecretDenylist::lastWords()
{
    return secretLastWords;
}

std::span<const QStringView> SecretDenylist::wordsOfCopies()
{
    return copyWords;
}

std::span<const QStringView> SecretDenylist::folders()
{
    return secretFolders;
}

std::span<const QStringView> SecretDenylist::endingsOfCopies()
{
    return copies;
}

} // namespace pobblewig
