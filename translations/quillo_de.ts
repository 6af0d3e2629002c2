<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AddTntOptionsForm</name>
    <message>
        <source>Keep incomplete torrents in</source>
        <translation>Unvollständige Torrents speichern in</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manuell</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Create subfolder</source>
        <translation>Unterordner erstellen</translation>
    </message>
    <message>
        <source>Don&apos;t create subfolder</source>
        <translation>Keinen Unterordner erstellen</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Metadata received</source>
        <translation>Metadaten empfangen</translation>
    </message>
    <message>
        <source>Files checked</source>
        <translation>Dateien überprüft</translation>
    </message>
    <message>
        <source>Start torrent</source>
        <translation>Torrent starten</translation>
    </message>
    <message>
        <source>Add to top of queue</source>
        <translation>An den Anfang der Warteschlange</translation>
    </message>
    <message>
        <source>Skip hash check</source>
        <translation>Prüfsummenkontrolle überspringen</translation>
    </message>
    <message>
        <source>Download in sequential order</source>
        <translation>Der Reihe nach herunterladen</translation>
    </message>
    <message>
        <source>Download first and last pieces first</source>
        <translation>Erste und letzte Teile zuerst laden</translation>
    </message>
    <message>
        <source>Save at</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Torrent management</source>
        <translation>Torrent-Management</translation>
    </message>
    <message>
        <source>Content layout</source>
        <translation>Inhaltslayout</translation>
    </message>
    <message>
        <source>Stop condition</source>
        <translation>Stoppbedingung</translation>
    </message>
    <message>
        <source>Download limit</source>
        <translation>Downloadbegrenzung</translation>
    </message>
    <message>
        <source>Upload limit</source>
        <translation>Uploadbegrenzung</translation>
    </message>
    <message>
        <source>Ratio limit</source>
        <translation>Verhältnisgrenze</translation>
    </message>
    <message>
        <source>Seeding time limit</source>
        <translation>Verteilzeitgrenze</translation>
    </message>
</context>
<context>
    <name>AddTntWindow</name>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Add Torrent</source>
        <translation>Torrent hinzufügen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Info hash:</source>
        <translation>Info-Hash:</translation>
    </message>
    <message>
        <source>Comment:</source>
        <translation>Kommentar:</translation>
    </message>
    <message>
        <source>Created by:</source>
        <translation>Erstellt von:</translation>
    </message>
    <message>
        <source>Created on:</source>
        <translation>Erstellt am:</translation>
    </message>
    <message>
        <source>Private:</source>
        <translation>Privat:</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Listing %L1 files…</source>
        <translation>%L1 Dateien werden aufgelistet…</translation>
    </message>
    <message>
        <source>Failed to get the default save path: %1</source>
        <translation>Der Standard-Speicherpfad konnte nicht gelesen werden: %1</translation>
    </message>
</context>
<context>
    <name>ConnectionEditor</name>
    <message>
        <source>Use HTTPS</source>
        <translation>HTTPS verwenden</translation>
    </message>
    <message>
        <source>Edit Connection</source>
        <translation>Verbindung bearbeiten</translation>
    </message>
    <message>
        <source>New Connection</source>
        <translation>Neue Verbindung</translation>
    </message>
    <message>
        <source>Describe how Quillo will connect to your qbt server</source>
        <translation>Beschreiben Sie, wie sich Quillo mit Ihrem qBittorrent-Server verbindet</translation>
    </message>
    <message>
        <source>Optional</source>
        <translation>Optional</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Host</source>
        <translation>Host</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Username</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>API Key</source>
        <translation>API-Schlüssel</translation>
    </message>
    <message>
        <source>Authentication</source>
        <translation>Authentifizierung</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>No Authentication</source>
        <translation>Keine Authentifizierung</translation>
    </message>
    <message>
        <source>Standard Login</source>
        <translation>Standard-Anmeldung</translation>
    </message>
    <message>
        <source>Basic Auth</source>
        <translation>Basic Auth</translation>
    </message>
    <message>
        <source>Use only when qBittorrent bypasses WebUI authentication for this client.</source>
        <translation>Nur verwenden, wenn qBittorrent die WebUI-Authentifizierung für diesen Client umgeht.</translation>
    </message>
    <message>
        <source>Classic qBittorrent login. Quillo sends username and password to /api/v2/auth/login and then uses the session cookie.</source>
        <translation>Klassische qBittorrent-Anmeldung. Quillo sendet Benutzername und Passwort an /api/v2/auth/login und verwendet dann das Sitzungs-Cookie.</translation>
    </message>
    <message>
        <source>qBittorrent 5.2+ can accept username and password in the HTTP Authorization header.</source>
        <translation>qBittorrent ab 5.2 nimmt Benutzername und Passwort im HTTP-Authorization-Header an.</translation>
    </message>
    <message>
        <source>qBittorrent 5.2+ WebAPI access with Authorization: Bearer. It does not use login/logout cookies.</source>
        <translation>WebAPI-Zugriff ab qBittorrent 5.2 mit Authorization: Bearer. Ohne Anmelde- und Abmelde-Cookies.</translation>
    </message>
    <message>
        <source>Enter the server&apos;s host name or IP address.</source>
        <translation>Geben Sie den Hostnamen oder die IP-Adresse des Servers ein.</translation>
    </message>
    <message>
        <source>A host name cannot contain spaces.</source>
        <translation>Ein Hostname darf keine Leerzeichen enthalten.</translation>
    </message>
    <message>
        <source>Enter the host alone, without “http://” or “https://”: use the Use HTTPS option instead.</source>
        <translation>Geben Sie nur den Host ein, ohne „http://“ oder „https://“; verwenden Sie stattdessen die Option „HTTPS verwenden“.</translation>
    </message>
    <message>
        <source>“%1” is not a valid host name or IP address.</source>
        <translation>„%1“ ist kein gültiger Hostname und keine gültige IP-Adresse.</translation>
    </message>
    <message>
        <source>Enter the port the WebUI listens on.</source>
        <translation>Geben Sie den Port ein, auf dem die WebUI lauscht.</translation>
    </message>
    <message>
        <source>The port must be a number from 1 to 65535.</source>
        <translation>Der Port muss eine Zahl von 1 bis 65535 sein.</translation>
    </message>
</context>
<context>
    <name>LinksDialog</name>
    <message>
        <source>Add Links</source>
        <translation>Links hinzufügen</translation>
    </message>
    <message>
        <source>Magnet links, links to .torrent files or info-hashes, one per line</source>
        <translation>Magnet-Links, Links zu .torrent-Dateien oder Info-Hashes, einer pro Zeile</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Not a link or info-hash: %1</source>
        <translation>Kein Link und kein Info-Hash: %1</translation>
    </message>
</context>
<context>
    <name>LoginPrompt</name>
    <message>
        <source>Enter your credentials</source>
        <translation>Zugangsdaten eingeben</translation>
    </message>
    <message>
        <source>Login automatically</source>
        <translation>Automatisch anmelden</translation>
    </message>
    <message>
        <source>Login</source>
        <translation>Anmeldung</translation>
    </message>
    <message>
        <source>Username</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>API Key</source>
        <translation>API-Schlüssel</translation>
    </message>
    <message>
        <source>If you enable the Login automatically option, credentials will be safely stored in the keychain. This allows you to connect to %1 without entering credentials on any device.</source>
        <translation>Mit „Automatisch anmelden“ werden die Zugangsdaten sicher im Schlüsselbund gespeichert. So verbindet sich Quillo mit %1, ohne dass die Zugangsdaten erneut eingegeben werden müssen.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Log In</source>
        <translation>Anmelden</translation>
    </message>
</context>
<context>
    <name>MainMenus</name>
    <message>
        <source>&lt;h3&gt;Quillo %1&lt;/h3&gt;&lt;p&gt;A desktop remote control for qBittorrent.&lt;/p&gt;&lt;p&gt;Build %2, Qt %3&lt;/p&gt;&lt;p&gt;Licensed under the GNU General Public License, version 3 or later.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Quillo %1&lt;/h3&gt;&lt;p&gt;Eine Desktop-Fernsteuerung für qBittorrent.&lt;/p&gt;&lt;p&gt;Build %2, Qt %3&lt;/p&gt;&lt;p&gt;Lizenziert unter der GNU General Public License, Version 3 oder später.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Filter torrents</source>
        <translation>Torrents filtern</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Einstellungen...</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Show Sidebar</source>
        <translation>Seitenleiste anzeigen</translation>
    </message>
    <message>
        <source>Show Torrent Details</source>
        <translation>Torrent-Details anzeigen</translation>
    </message>
    <message>
        <source>Show Status Bar</source>
        <translation>Statusleiste anzeigen</translation>
    </message>
    <message>
        <source>Show Toolbar</source>
        <translation>Werkzeugleiste anzeigen</translation>
    </message>
    <message>
        <source>Torrent</source>
        <translation>Torrent</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>Nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>About Quillo</source>
        <translation>Über Quillo</translation>
    </message>
</context>
<context>
    <name>MetadataFetchStatus</name>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Add the torrent without choosing its files</source>
        <translation>Den Torrent hinzufügen, ohne seine Dateien auszuwählen</translation>
    </message>
    <message>
        <source>Metadata not fetched: the torrent is added with all its files.</source>
        <translation>Metadaten nicht geladen: Der Torrent wird mit allen Dateien hinzugefügt.</translation>
    </message>
    <message>
        <source>Fetching metadata… %1:%2</source>
        <translation>Metadaten werden geladen… %1:%2</translation>
    </message>
    <message>
        <source>Failed to fetch metadata: %1</source>
        <translation>Metadaten konnten nicht geladen werden: %1</translation>
    </message>
</context>
<context>
    <name>ReconnectionOverlay</name>
    <message>
        <source>An unknown error has occurred</source>
        <translation>Ein unbekannter Fehler ist aufgetreten</translation>
    </message>
    <message>
        <source>Automatic reconnection stopped</source>
        <translation>Automatische Wiederverbindung angehalten</translation>
    </message>
    <message>
        <source>Reconnecting in %1 s</source>
        <translation>Neue Verbindung in %1 s</translation>
    </message>
    <message>
        <source>Reconnecting…</source>
        <translation>Verbinde erneut…</translation>
    </message>
    <message>
        <source>Reconnect now</source>
        <translation>Jetzt neu verbinden</translation>
    </message>
</context>
<context>
    <name>ServerMenu</name>
    <message>
        <source>No Connection</source>
        <translation>Keine Verbindung</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Install on %1…</source>
        <translation>Auf %1 installieren…</translation>
    </message>
    <message>
        <source>Reinstall qBittorrent…</source>
        <translation>qBittorrent neu installieren…</translation>
    </message>
    <message>
        <source>Delete from %1…</source>
        <translation>Von %1 löschen…</translation>
    </message>
    <message>
        <source>Add Connection…</source>
        <translation>Verbindung hinzufügen…</translation>
    </message>
    <message>
        <source>Edit Connection…</source>
        <translation>Verbindung bearbeiten…</translation>
    </message>
    <message>
        <source>Delete All Connections…</source>
        <translation>Alle Verbindungen löschen…</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Not Connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Delete all remote connections?</source>
        <translation>Alle entfernten Verbindungen löschen?</translation>
    </message>
    <message>
        <source>Delete All</source>
        <translation>Alle löschen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>SidebarView</name>
    <message>
        <source>State</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Categories</source>
        <translation>Kategorien</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Trackers</source>
        <translation>Tracker</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Size: </source>
        <translation>Größe: </translation>
    </message>
    <message>
        <source>New Category...</source>
        <translation>Neue Kategorie...</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>New Tags...</source>
        <translation>Neue Tags...</translation>
    </message>
</context>
<context>
    <name>StatisticsWindow</name>
    <message>
        <source>Statistics</source>
        <translation>Statistiken</translation>
    </message>
</context>
<context>
    <name>TntActions</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Add Torrent Files</source>
        <translation>Torrent-Dateien hinzufügen</translation>
    </message>
    <message>
        <source>Add Links</source>
        <translation>Links hinzufügen</translation>
    </message>
    <message>
        <source>Remove with Files</source>
        <translation>Mit Dateien entfernen</translation>
    </message>
    <message>
        <source>Minimum priority</source>
        <translation>Niedrigste Priorität</translation>
    </message>
    <message>
        <source>Decrease priority</source>
        <translation>Priorität verringern</translation>
    </message>
    <message>
        <source>Increase priority</source>
        <translation>Priorität erhöhen</translation>
    </message>
    <message>
        <source>Maximum priority</source>
        <translation>Höchste Priorität</translation>
    </message>
    <message>
        <source>Force start</source>
        <translation>Start erzwingen</translation>
    </message>
    <message>
        <source>Force reannounce</source>
        <translation>Erneute Ankündigung erzwingen</translation>
    </message>
    <message>
        <source>Force recheck</source>
        <translation>Erneute Überprüfung erzwingen</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>Umbenennen...</translation>
    </message>
    <message>
        <source>Set location...</source>
        <translation>Speicherort ändern...</translation>
    </message>
    <message>
        <source>Export .torrent...</source>
        <translation>.torrent exportieren...</translation>
    </message>
    <message>
        <source>Add trackers...</source>
        <translation>Tracker hinzufügen...</translation>
    </message>
    <message>
        <source>Add peers...</source>
        <translation>Peers hinzufügen...</translation>
    </message>
    <message>
        <source>Limit download rate...</source>
        <translation>Downloadrate begrenzen...</translation>
    </message>
    <message>
        <source>Limit upload rate...</source>
        <translation>Uploadrate begrenzen...</translation>
    </message>
    <message>
        <source>Limit share ratio...</source>
        <translation>Verhältnis begrenzen...</translation>
    </message>
    <message>
        <source>Global Download Limit...</source>
        <translation>Globale Downloadbegrenzung...</translation>
    </message>
    <message>
        <source>Global Upload Limit...</source>
        <translation>Globale Uploadbegrenzung...</translation>
    </message>
    <message>
        <source>Shut Down Server...</source>
        <translation>Server herunterfahren...</translation>
    </message>
    <message>
        <source>Statistics...</source>
        <translation>Statistiken...</translation>
    </message>
    <message>
        <source>Alternative Speed Limits</source>
        <translation>Alternative Geschwindigkeitsbegrenzungen</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Im Dateimanager anzeigen</translation>
    </message>
    <message>
        <source>Automatic torrent management</source>
        <translation>Automatisches Torrent-Management</translation>
    </message>
    <message>
        <source>Download first and last pieces first</source>
        <translation>Erste und letzte Teile zuerst laden</translation>
    </message>
    <message>
        <source>Download in sequential order</source>
        <translation>Der Reihe nach herunterladen</translation>
    </message>
    <message>
        <source>Super seeding mode</source>
        <translation>Super-Seeding-Modus</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Hash</source>
        <translation>Hash</translation>
    </message>
    <message>
        <source>Magnet link</source>
        <translation>Magnet-Link</translation>
    </message>
    <message>
        <source>Start Torrents</source>
        <translation>Torrents starten</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Stop Torrents</source>
        <translation>Torrents stoppen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Remove Torrents</source>
        <translation>Torrents entfernen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Show in File Manager(not configured)</source>
        <translation>Im Dateimanager anzeigen (nicht eingerichtet)</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Remove all</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Add tags...</source>
        <translation>Tags hinzufügen...</translation>
    </message>
</context>
<context>
    <name>TntAddingFlow</name>
    <message>
        <source>Add Torrent Files</source>
        <translation>Torrent-Dateien hinzufügen</translation>
    </message>
    <message>
        <source>Torrent files (*.torrent)</source>
        <translation>Torrent-Dateien (*.torrent)</translation>
    </message>
    <message>
        <source>Failed to add torrent!</source>
        <translation>Torrent konnte nicht hinzugefügt werden!</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid torrent file.</source>
        <translation>„%1“ ist keine gültige Torrent-Datei.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Adding Torrents</source>
        <translation>Torrents werden hinzugefügt</translation>
    </message>
    <message>
        <source>Adding torrent %1 of %2…</source>
        <translation>Torrent %1 von %2 wird hinzugefügt…</translation>
    </message>
</context>
<context>
    <name>TntCommands</name>
    <message>
        <source>Are you sure you want to remove All torrents?</source>
        <translation>Sollen wirklich alle Torrents entfernt werden?</translation>
    </message>
    <message>
        <source>Are you sure you want to remove 1 torrent?</source>
        <translation>Soll wirklich 1 Torrent entfernt werden?</translation>
    </message>
    <message>
        <source>Are you sure you want to remove %1 torrents?</source>
        <translation>Sollen wirklich %1 Torrents entfernt werden?</translation>
    </message>
    <message>
        <source>This torrent will be deleted immediately. You can’t undo this action.</source>
        <translation>Dieser Torrent wird sofort gelöscht. Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>These torrents will be deleted immediately. You can’t undo this action.</source>
        <translation>Diese Torrents werden sofort gelöscht. Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>Remove from List</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Remove Everywhere</source>
        <translation>Überall entfernen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>New torrent location</source>
        <translation>Neuer Speicherort des Torrents</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Speicherort</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>New name</source>
        <translation>Neuer Name</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>List of peers to add (one Peer per line)</source>
        <translation>Hinzuzufügende Peers (ein Peer pro Zeile)</translation>
    </message>
    <message>
        <source>Format: IPv4:port / [IPv6]:port</source>
        <translation>Format: IPv4:Port / [IPv6]:Port</translation>
    </message>
    <message>
        <source>List of trackers to add (one per line)</source>
        <translation>Hinzuzufügende Tracker (einer pro Zeile)</translation>
    </message>
    <message>
        <source>Edit tracker URL</source>
        <translation>Tracker-URL bearbeiten</translation>
    </message>
    <message>
        <source>List of web seeds to add (one per line)</source>
        <translation>Hinzuzufügende Webseeds (einer pro Zeile)</translation>
    </message>
    <message>
        <source>Edit web seed URL</source>
        <translation>Webseed-URL bearbeiten</translation>
    </message>
    <message>
        <source>URL</source>
        <translation>URL</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently ban the selected peer?</source>
        <translation>Soll der ausgewählte Peer wirklich dauerhaft gesperrt werden?</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently ban the selected peers?</source>
        <translation>Sollen die ausgewählten Peers wirklich dauerhaft gesperrt werden?</translation>
    </message>
    <message>
        <source>Ban</source>
        <translation>Sperren</translation>
    </message>
    <message>
        <source>Limit</source>
        <translation>Begrenzung</translation>
    </message>
    <message>
        <source>Torrent Download Speed Limiting</source>
        <translation>Downloadgeschwindigkeit des Torrents begrenzen</translation>
    </message>
    <message>
        <source>Torrent Upload Speed Limiting</source>
        <translation>Uploadgeschwindigkeit des Torrents begrenzen</translation>
    </message>
    <message>
        <source>Global Download Speed Limit</source>
        <translation>Globale Downloadbegrenzung</translation>
    </message>
    <message>
        <source>Global Upload Speed Limit</source>
        <translation>Globale Uploadbegrenzung</translation>
    </message>
    <message>
        <source>Share Limits</source>
        <translation>Verteilungsgrenzen</translation>
    </message>
    <message>
        <source>Use global limit</source>
        <translation>Globale Grenze verwenden</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>Verhältnis</translation>
    </message>
    <message>
        <source>Seeding time</source>
        <translation>Verteilzeit</translation>
    </message>
    <message>
        <source>Inactive seeding time</source>
        <translation>Inaktive Verteilzeit</translation>
    </message>
    <message>
        <source>Shut down &quot;%1&quot;?</source>
        <translation>„%1“ herunterfahren?</translation>
    </message>
    <message>
        <source>qBittorrent will quit on the server, and its torrents stop until it is started there again.</source>
        <translation>qBittorrent wird auf dem Server beendet, und seine Torrents stehen still, bis es dort wieder gestartet wird.</translation>
    </message>
    <message>
        <source>Shut Down</source>
        <translation>Herunterfahren</translation>
    </message>
    <message>
        <source>New category</source>
        <translation>Neue Kategorie</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Save path</source>
        <translation>Speicherpfad</translation>
    </message>
    <message>
        <source>Edit category</source>
        <translation>Kategorie bearbeiten</translation>
    </message>
    <message>
        <source>New tags</source>
        <translation>Neue Tags</translation>
    </message>
    <message>
        <source>Tags separated by space</source>
        <translation>Tags durch Leerzeichen getrennt</translation>
    </message>
</context>
<context>
    <name>TntContentModel</name>
    <message>
        <source>Do not download</source>
        <translation>Nicht herunterladen</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximal</translation>
    </message>
    <message>
        <source>Mixed</source>
        <translation>Gemischt</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Remaining</source>
        <translation>Verbleibend</translation>
    </message>
    <message>
        <source>Availability</source>
        <translation>Verfügbarkeit</translation>
    </message>
</context>
<context>
    <name>TntContentTab</name>
    <message>
        <source>Filter files...</source>
        <translation>Dateien filtern...</translation>
    </message>
</context>
<context>
    <name>TntContentTree</name>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Im Dateimanager anzeigen</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>Umbenennen...</translation>
    </message>
</context>
<context>
    <name>TntDetailPane</name>
    <message>
        <source>Time active</source>
        <translation>Aktiv seit</translation>
    </message>
    <message>
        <source>ETA</source>
        <translation>Restzeit</translation>
    </message>
    <message>
        <source>Connections</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <source>Downloaded</source>
        <translation>Heruntergeladen</translation>
    </message>
    <message>
        <source>Uploaded</source>
        <translation>Hochgeladen</translation>
    </message>
    <message>
        <source>Seeds</source>
        <translation>Seeds</translation>
    </message>
    <message>
        <source>Download speed</source>
        <translation>Downloadgeschwindigkeit</translation>
    </message>
    <message>
        <source>Upload speed</source>
        <translation>Uploadgeschwindigkeit</translation>
    </message>
    <message>
        <source>Peers</source>
        <translation>Peers</translation>
    </message>
    <message>
        <source>Download limit</source>
        <translation>Downloadbegrenzung</translation>
    </message>
    <message>
        <source>Upload limit</source>
        <translation>Uploadbegrenzung</translation>
    </message>
    <message>
        <source>Wasted</source>
        <translation>Verworfen</translation>
    </message>
    <message>
        <source>Share ratio</source>
        <translation>Verhältnis</translation>
    </message>
    <message>
        <source>Reannounce in</source>
        <translation>Nächste Ankündigung in</translation>
    </message>
    <message>
        <source>Last seen complete</source>
        <translation>Zuletzt vollständig gesehen</translation>
    </message>
    <message>
        <source>Total size</source>
        <translation>Gesamtgröße</translation>
    </message>
    <message>
        <source>Added on</source>
        <translation>Hinzugefügt am</translation>
    </message>
    <message>
        <source>Completed on</source>
        <translation>Abgeschlossen am</translation>
    </message>
    <message>
        <source>Created on</source>
        <translation>Erstellt am</translation>
    </message>
    <message>
        <source>Created by</source>
        <translation>Erstellt von</translation>
    </message>
    <message>
        <source>Pieces</source>
        <translation>Teile</translation>
    </message>
    <message>
        <source>Availability</source>
        <translation>Verfügbarkeit</translation>
    </message>
    <message>
        <source>Info hash v1</source>
        <translation>Info-Hash v1</translation>
    </message>
    <message>
        <source>Info hash v2</source>
        <translation>Info-Hash v2</translation>
    </message>
    <message>
        <source>Save path</source>
        <translation>Speicherpfad</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>%1 (%2 this session)</source>
        <translation>%1 (%2 in dieser Sitzung)</translation>
    </message>
    <message>
        <source>%1 (%2 avg.)</source>
        <translation>%1 (Ø %2)</translation>
    </message>
    <message>
        <source> (seeded for %1)</source>
        <translation> (verteilt seit %1)</translation>
    </message>
    <message>
        <source>max</source>
        <translation>max.</translation>
    </message>
    <message>
        <source>total</source>
        <translation>gesamt</translation>
    </message>
    <message>
        <source>%1 x %2 (have %3)</source>
        <translation>%1 × %2 (%3 vorhanden)</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Trackers</source>
        <translation>Tracker</translation>
    </message>
    <message>
        <source>HTTP Sources</source>
        <translation>HTTP-Quellen</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>Downloaded pieces:</source>
        <translation>Heruntergeladene Teile:</translation>
    </message>
    <message>
        <source>Transfer</source>
        <translation>Übertragung</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Informationen</translation>
    </message>
    <message>
        <source>No torrent selected</source>
        <translation>Kein Torrent ausgewählt</translation>
    </message>
    <message>
        <source>%1 torrents selected</source>
        <translation>%1 Torrents ausgewählt</translation>
    </message>
    <message>
        <source>Add trackers...</source>
        <translation>Tracker hinzufügen...</translation>
    </message>
    <message>
        <source>Edit tracker URL...</source>
        <translation>Tracker-URL bearbeiten...</translation>
    </message>
    <message>
        <source>Copy tracker URL</source>
        <translation>Tracker-URL kopieren</translation>
    </message>
    <message>
        <source>Remove trackers</source>
        <translation>Tracker entfernen</translation>
    </message>
    <message>
        <source>Remove tracker</source>
        <translation>Tracker entfernen</translation>
    </message>
    <message>
        <source>Add peers...</source>
        <translation>Peers hinzufügen...</translation>
    </message>
    <message>
        <source>Copy IP:port</source>
        <translation>IP:Port kopieren</translation>
    </message>
    <message>
        <source>Ban peer permanently</source>
        <translation>Peer dauerhaft sperren</translation>
    </message>
</context>
<context>
    <name>TntHttpSources</name>
    <message>
        <source>Add web seeds...</source>
        <translation>Webseeds hinzufügen...</translation>
    </message>
    <message>
        <source>Edit web seed URL...</source>
        <translation>Webseed-URL bearbeiten...</translation>
    </message>
    <message>
        <source>Copy web seed URL</source>
        <translation>Webseed-URL kopieren</translation>
    </message>
    <message>
        <source>Remove web seeds</source>
        <translation>Webseeds entfernen</translation>
    </message>
    <message>
        <source>Remove web seed</source>
        <translation>Webseed entfernen</translation>
    </message>
</context>
<context>
    <name>TntMetadata</name>
    <message>
        <source>n/a</source>
        <comment>not available</comment>
        <translation>k. A.</translation>
    </message>
</context>
<context>
    <name>TntModel</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Lädt herunter</translation>
    </message>
    <message>
        <source>Seeding</source>
        <translation>Verteilt</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Gestoppt</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Abgeschlossen</translation>
    </message>
    <message>
        <source>Queued</source>
        <translation>Eingereiht</translation>
    </message>
    <message>
        <source>Stalled</source>
        <translation>Blockiert</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Wird überprüft</translation>
    </message>
    <message>
        <source>Moving</source>
        <translation>Wird verschoben</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Missing files</source>
        <translation>Fehlende Dateien</translation>
    </message>
    <message>
        <source>[F] Seeding</source>
        <translation>[E] Verteilt</translation>
    </message>
    <message>
        <source>[F] Downloading</source>
        <translation>[E] Lädt herunter</translation>
    </message>
    <message>
        <source>[F] Metadata loading</source>
        <translation>[E] Lädt Metadaten</translation>
    </message>
    <message>
        <source>Allocating disk space</source>
        <translation>Reserviere Speicherplatz</translation>
    </message>
    <message>
        <source>Metadata loading</source>
        <translation>Lädt Metadaten</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
</context>
<context>
    <name>TntReveal</name>
    <message>
        <source>The shared folder is not mounted</source>
        <translation>Der freigegebene Ordner ist nicht eingehängt</translation>
    </message>
    <message>
        <source>Quillo cannot reach &quot;%1&quot;: it is not there. Mount the share that holds the torrent&apos;s files, or check your path mapping settings.</source>
        <translation>Quillo erreicht „%1“ nicht: Der Ordner ist nicht da. Hängen Sie die Freigabe mit den Dateien des Torrents ein oder prüfen Sie die Pfadzuordnung in den Einstellungen.</translation>
    </message>
</context>
<context>
    <name>TntTableModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Down Speed</source>
        <translation>DL-Geschw.</translation>
    </message>
    <message>
        <source>Up Speed</source>
        <translation>UL-Geschw.</translation>
    </message>
    <message>
        <source>Seeds</source>
        <translation>Seeds</translation>
    </message>
    <message>
        <source>Peers</source>
        <translation>Peers</translation>
    </message>
    <message>
        <source>ETA</source>
        <translation>Restzeit</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>Verhältnis</translation>
    </message>
    <message>
        <source>Added on</source>
        <translation>Hinzugefügt am</translation>
    </message>
    <message>
        <source>Completed On</source>
        <translation>Abgeschlossen am</translation>
    </message>
    <message>
        <source>Seen Complete</source>
        <translation>Zuletzt vollständig</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
</context>
<context>
    <name>TransferStatus</name>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Firewalled</source>
        <translation>Hinter einer Firewall</translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>Alt. speed</source>
        <translation>Alt. Geschw.</translation>
    </message>
    <message>
        <source>Alternative speed limits</source>
        <translation>Alternative Geschwindigkeitsbegrenzungen</translation>
    </message>
    <message>
        <source>Connection status: </source>
        <translation>Verbindungsstatus: </translation>
    </message>
    <message>
        <source>DHT Nodes: %1</source>
        <translation>DHT-Knoten: %1</translation>
    </message>
    <message>
        <source>Free Space: </source>
        <translation>Freier Speicher: </translation>
    </message>
    <message>
        <source>Global Ratio: </source>
        <translation>Globales Verhältnis: </translation>
    </message>
    <message>
        <source>This session: %1
All time: %2</source>
        <translation>Diese Sitzung: %1
Insgesamt: %2</translation>
    </message>
    <message>
        <source>Downloaded</source>
        <translation>Heruntergeladen</translation>
    </message>
    <message>
        <source>Uploaded</source>
        <translation>Hochgeladen</translation>
    </message>
    <message>
        <source>Show torrent details</source>
        <translation>Torrent-Details anzeigen</translation>
    </message>
    <message>
        <source>Hide torrent details</source>
        <translation>Torrent-Details ausblenden</translation>
    </message>
    <message>
        <source>Global upload limit</source>
        <translation>Globale Uploadbegrenzung</translation>
    </message>
    <message>
        <source>Global download limit</source>
        <translation>Globale Downloadbegrenzung</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <source>Start All Torrents</source>
        <translation>Alle Torrents starten</translation>
    </message>
    <message>
        <source>Stop All Torrents</source>
        <translation>Alle Torrents stoppen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Hide Quillo</source>
        <translation>Quillo ausblenden</translation>
    </message>
    <message>
        <source>Show Quillo</source>
        <translation>Quillo anzeigen</translation>
    </message>
    <message>
        <source>
Not connected</source>
        <translation>
Nicht verbunden</translation>
    </message>
</context>
<context>
    <name>WelcomeView</name>
    <message>
        <source>Welcome to Quillo</source>
        <translation>Willkommen bei Quillo</translation>
    </message>
    <message>
        <source>Connect to qBittorrent to start managing your torrents.</source>
        <translation>Verbinden Sie sich mit qBittorrent, um Ihre Torrents zu verwalten.</translation>
    </message>
    <message>
        <source>Connect to a Server</source>
        <translation>Mit einem Server verbinden</translation>
    </message>
    <message>
        <source>Use qBittorrent running on another computer or a NAS.</source>
        <translation>qBittorrent auf einem anderen Computer oder einem NAS verwenden.</translation>
    </message>
    <message>
        <source>Install on </source>
        <translation>Installieren auf </translation>
    </message>
    <message>
        <source>Download qBittorrent and run it in the background.</source>
        <translation>qBittorrent herunterladen und im Hintergrund ausführen.</translation>
    </message>
</context>
</TS>
