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
    <name>AppContext</name>
    <message>
        <source>The file is kept unchanged as %1. Quillo started with what it could read of it; everything else has its default value.</source>
        <translation>Die Datei bleibt unverändert als %1 erhalten. Quillo hat mit dem gestartet, was es daraus lesen konnte; alles andere hat seinen Standardwert.</translation>
    </message>
    <message>
        <source>Quillo could not read its settings file.</source>
        <translation>Quillo konnte seine Einstellungsdatei nicht lesen.</translation>
    </message>
</context>
<context>
    <name>CertificateTrust</name>
    <message>
        <source>The server&apos;s certificate has changed!</source>
        <translation>Das Zertifikat des Servers hat sich geändert!</translation>
    </message>
    <message>
        <source>Trust the server&apos;s certificate?</source>
        <translation>Dem Zertifikat des Servers vertrauen?</translation>
    </message>
    <message>
        <source>

Quillo does not connect to this server until you trust the new certificate.</source>
        <translation>

Quillo verbindet sich erst wieder mit diesem Server, wenn Sie dem neuen Zertifikat vertrauen.</translation>
    </message>
    <message>
        <source>

A server with a self-signed certificate looks like this. Trust it only if these are the details of your server&apos;s certificate: Quillo then accepts exactly this certificate for this connection, and asks again if it changes.</source>
        <translation>

So sieht ein Server mit selbstsigniertem Zertifikat aus. Vertrauen Sie ihm nur, wenn dies die Angaben des Zertifikats Ihres Servers sind: Quillo akzeptiert dann genau dieses Zertifikat für diese Verbindung und fragt erneut, wenn es sich ändert.</translation>
    </message>
    <message>
        <source>Trust New Certificate</source>
        <translation>Neuem Zertifikat vertrauen</translation>
    </message>
    <message>
        <source>Trust Certificate</source>
        <translation>Zertifikat vertrauen</translation>
    </message>
    <message>
        <source>Don&apos;t Connect</source>
        <translation>Nicht verbinden</translation>
    </message>
    <message>
        <source>Not connected.</source>
        <translation>Nicht verbunden.</translation>
    </message>
</context>
<context>
    <name>Client</name>
    <message>
        <source>The connection was closed.</source>
        <translation>Die Verbindung wurde geschlossen.</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>Die Anfrage hat zu lange gedauert.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a version number.</source>
        <translation>„%1“ ist keine Versionsnummer.</translation>
    </message>
    <message>
        <source>The connection closed in the middle of the answer.</source>
        <translation>Die Verbindung wurde mitten in der Antwort geschlossen.</translation>
    </message>
</context>
<context>
    <name>ClientError</name>
    <message>
        <source>An unexpected error occurred!</source>
        <translation>Ein unerwarteter Fehler ist aufgetreten!</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>A desktop remote control for qBittorrent.</source>
        <translation>Eine Desktop-Fernsteuerung für qBittorrent.</translation>
    </message>
    <message>
        <source>Start in the tray, without showing the window.</source>
        <translation>Im Infobereich starten, ohne das Fenster zu zeigen.</translation>
    </message>
    <message>
        <source>Choose torrent files to add.</source>
        <translation>Hinzuzufügende Torrent-Dateien auswählen.</translation>
    </message>
    <message>
        <source>Enter links to add.</source>
        <translation>Hinzuzufügende Links eingeben.</translation>
    </message>
    <message>
        <source>.torrent files, magnet or web links, or info-hashes to add.</source>
        <translation>Hinzuzufügende .torrent-Dateien, Magnet- oder Web-Links oder Info-Hashes.</translation>
    </message>
    <message>
        <source>[torrents...]</source>
        <translation>[Torrents...]</translation>
    </message>
</context>
<context>
    <name>CompletionNotifier</name>
    <message>
        <source>Download completed</source>
        <translation>Download abgeschlossen</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>A download completed while Quillo was closed</source>
        <translation>Ein Download wurde abgeschlossen, während Quillo geschlossen war</translation>
    </message>
    <message>
        <source>%1 downloads completed while Quillo was closed</source>
        <translation>%1 Downloads wurden abgeschlossen, während Quillo geschlossen war</translation>
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
    <name>Connector</name>
    <message>
        <source>Failed to login.</source>
        <translation>Anmeldung fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Failed to check authorization bypass.</source>
        <translation>Die Umgehung der Anmeldung konnte nicht geprüft werden.</translation>
    </message>
    <message>
        <source>Failed to get QBt version.</source>
        <translation>Die qBittorrent-Version konnte nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get web API version.</source>
        <translation>Die Web-API-Version konnte nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to logout.</source>
        <translation>Abmeldung fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t read the saved password from the keyring.</source>
        <translation>Quillo konnte das gespeicherte Passwort nicht aus dem Schlüsselbund lesen.</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t save the password to the keyring. It will be asked for next time.</source>
        <translation>Quillo konnte das Passwort nicht im Schlüsselbund speichern. Es wird beim nächsten Mal erneut abgefragt.</translation>
    </message>
</context>
<context>
    <name>ConnectorRecovery</name>
    <message>
        <source>Failed to reconnect.</source>
        <translation>Erneutes Verbinden fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>DropOverlay</name>
    <message>
        <source>Drop Files here</source>
        <translation>Dateien hier ablegen</translation>
    </message>
</context>
<context>
    <name>EditorSheet</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source> KiB/s</source>
        <translation> KiB/s</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <translation>Unbegrenzt</translation>
    </message>
</context>
<context>
    <name>Endpoint</name>
    <message>
        <source>Invalid web seed URL!</source>
        <translation>Ungültige Webseed-URL!</translation>
    </message>
    <message>
        <source>Failed to edit web seed!</source>
        <translation>Webseed konnte nicht bearbeitet werden!</translation>
    </message>
    <message>
        <source>Failed to add peers!</source>
        <translation>Peers konnten nicht hinzugefügt werden!</translation>
    </message>
    <message>
        <source>An error occurred while setting the torrent location!</source>
        <translation>Beim Setzen des Torrent-Speicherorts ist ein Fehler aufgetreten!</translation>
    </message>
    <message>
        <source>Invalid torrent name!</source>
        <translation>Ungültiger Torrent-Name!</translation>
    </message>
    <message>
        <source>Failed to rename!</source>
        <translation>Umbenennen fehlgeschlagen!</translation>
    </message>
    <message>
        <source>Category does not exist!</source>
        <translation>Die Kategorie existiert nicht!</translation>
    </message>
    <message>
        <source>Failed to create category!</source>
        <translation>Kategorie konnte nicht erstellt werden!</translation>
    </message>
    <message>
        <source>Failed to edit category!</source>
        <translation>Kategorie konnte nicht bearbeitet werden!</translation>
    </message>
</context>
<context>
    <name>Errors</name>
    <message>
        <source>You are not authorized!</source>
        <translation>Sie sind nicht angemeldet!</translation>
    </message>
    <message>
        <source>Forbidden!</source>
        <translation>Verboten!</translation>
    </message>
    <message>
        <source>Invalid username or password!</source>
        <translation>Ungültiger Benutzername oder ungültiges Passwort!</translation>
    </message>
    <message>
        <source>Invalid API key!</source>
        <translation>Ungültiger API-Schlüssel!</translation>
    </message>
    <message>
        <source>Authorization required.</source>
        <translation>Anmeldung erforderlich.</translation>
    </message>
    <message>
        <source>Your IP address has been banned after too many failed authentication attempts.</source>
        <translation>Ihre IP-Adresse wurde nach zu vielen fehlgeschlagenen Anmeldeversuchen gesperrt.</translation>
    </message>
    <message>
        <source>The API key is invalid or has been revoked. API keys are supported by qBittorrent 5.2 and later.</source>
        <translation>Der API-Schlüssel ist ungültig oder wurde widerrufen. API-Schlüssel gibt es ab qBittorrent 5.2.</translation>
    </message>
    <message>
        <source>You do not have write access to %1</source>
        <translation>Kein Schreibzugriff auf %1</translation>
    </message>
    <message>
        <source>The server cannot write to this folder.</source>
        <translation>Der Server kann nicht in diesen Ordner schreiben.</translation>
    </message>
    <message>
        <source>An error occurred while setting the torrent location!</source>
        <translation>Beim Setzen des Torrent-Speicherorts ist ein Fehler aufgetreten!</translation>
    </message>
    <message>
        <source>The server could not create the folder %1.</source>
        <translation>Der Server konnte den Ordner %1 nicht anlegen.</translation>
    </message>
    <message>
        <source>Torrent not found!</source>
        <translation>Torrent nicht gefunden!</translation>
    </message>
    <message>
        <source>The torrent is no longer on the server.</source>
        <translation>Der Torrent ist nicht mehr auf dem Server.</translation>
    </message>
    <message>
        <source>Torrent queueing is disabled!</source>
        <translation>Die Torrent-Warteschlange ist deaktiviert!</translation>
    </message>
    <message>
        <source>Turn on torrent queueing in the server&apos;s settings to change queue positions.</source>
        <translation>Schalten Sie in den Einstellungen des Servers die Warteschlange ein, um Positionen zu ändern.</translation>
    </message>
    <message>
        <source>An unexpected error occurred!</source>
        <translation>Ein unerwarteter Fehler ist aufgetreten!</translation>
    </message>
    <message>
        <source>The server refused the request&apos;s parameters.</source>
        <translation>Der Server hat die Parameter der Anfrage abgelehnt.</translation>
    </message>
    <message>
        <source>Invalid file!</source>
        <translation>Ungültige Datei!</translation>
    </message>
    <message>
        <source>The torrent has no file with this index.</source>
        <translation>Der Torrent hat keine Datei mit diesem Index.</translation>
    </message>
    <message>
        <source>Torrent metadata is not downloaded yet!</source>
        <translation>Die Torrent-Metadaten sind noch nicht heruntergeladen!</translation>
    </message>
    <message>
        <source>Try again when the server has received the torrent&apos;s metadata.</source>
        <translation>Versuchen Sie es erneut, wenn der Server die Metadaten des Torrents erhalten hat.</translation>
    </message>
    <message>
        <source>Failed to add torrent!</source>
        <translation>Torrent konnte nicht hinzugefügt werden!</translation>
    </message>
    <message>
        <source>The torrent file is not valid.</source>
        <translation>Die Torrent-Datei ist ungültig.</translation>
    </message>
    <message>
        <source>The server added nothing: the torrent may already be there.</source>
        <translation>Der Server hat nichts hinzugefügt: Der Torrent ist vielleicht schon vorhanden.</translation>
    </message>
    <message>
        <source>Invalid torrent source!</source>
        <translation>Ungültige Torrent-Quelle!</translation>
    </message>
    <message>
        <source>The link is neither a magnet link, a torrent URL nor an info-hash.</source>
        <translation>Der Link ist weder ein Magnet-Link noch eine Torrent-URL noch ein Info-Hash.</translation>
    </message>
    <message>
        <source>Invalid tracker URL!</source>
        <translation>Ungültige Tracker-URL!</translation>
    </message>
    <message>
        <source>The new tracker URL is not valid.</source>
        <translation>Die neue Tracker-URL ist ungültig.</translation>
    </message>
    <message>
        <source>Failed to edit tracker!</source>
        <translation>Tracker konnte nicht bearbeitet werden!</translation>
    </message>
    <message>
        <source>The new URL is already a tracker of this torrent, or the old one is gone.</source>
        <translation>Die neue URL ist bereits ein Tracker dieses Torrents, oder die alte gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>The server returned an invalid response!</source>
        <translation>Der Server hat eine ungültige Antwort gesendet!</translation>
    </message>
    <message>
        <source>URL: </source>
        <translation>URL: </translation>
    </message>
    <message>
        <source>Unable to build url!</source>
        <translation>Die URL konnte nicht gebildet werden!</translation>
    </message>
    <message>
        <source>For security, Quillo doesn&apos;t follow redirects to another host or from HTTPS to HTTP. Check the connection address.</source>
        <translation>Aus Sicherheitsgründen folgt Quillo keinen Weiterleitungen zu einem anderen Host oder von HTTPS zu HTTP. Prüfen Sie die Adresse der Verbindung.</translation>
    </message>
    <message>
        <source>

Redirect target: </source>
        <translation>

Weiterleitungsziel: </translation>
    </message>
    <message>
        <source>The server redirected the request to another address!</source>
        <translation>Der Server hat die Anfrage an eine andere Adresse weitergeleitet!</translation>
    </message>
    <message>
        <source>Connection error!</source>
        <translation>Verbindungsfehler!</translation>
    </message>
    <message>
        <source>Check network or client configuration.</source>
        <translation>Prüfen Sie das Netzwerk oder die Einstellungen der Verbindung.</translation>
    </message>
    <message>
        <source>Quillo is not connected to qBt!</source>
        <translation>Quillo ist nicht mit qBittorrent verbunden!</translation>
    </message>
    <message>
        <source>Click on the lock icon in the top right corner to connect.</source>
        <translation>Klicken Sie auf das Schloss oben rechts, um sich zu verbinden.</translation>
    </message>
    <message>
        <source>Could not decode JSON data</source>
        <translation>Die JSON-Daten konnten nicht gelesen werden</translation>
    </message>
    <message>
        <source>Could not decode response data to string!</source>
        <translation>Die Antwort konnte nicht als Text gelesen werden!</translation>
    </message>
    <message>
        <source>The server did not answer in time.</source>
        <translation>Der Server hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>The server refused the change.</source>
        <translation>Der Server hat die Änderung abgelehnt.</translation>
    </message>
    <message>
        <source>The server rejects this address!</source>
        <translation>Der Server weist diese Adresse ab!</translation>
    </message>
    <message>
        <source>qBittorrent answers every request for &quot;%1&quot; with &quot;Unauthorized&quot;: its Web UI checks the address a client uses, and this one is not among its server domains (or the port differs from the one it listens on, as behind a forwarded port). Add %1 to the server domains in the Web UI options, or turn off its Host header validation.</source>
        <translation>qBittorrent beantwortet jede Anfrage an „%1“ mit „Unauthorized“: Seine Web-Oberfläche prüft die Adresse, die ein Client verwendet, und diese gehört nicht zu seinen Server-Domains (oder der Port weicht von dem ab, auf dem es lauscht, wie hinter einer Portweiterleitung). Fügen Sie %1 in den Optionen der Web-Oberfläche zu den Server-Domains hinzu oder schalten Sie die Prüfung des Host-Headers aus.</translation>
    </message>
    <message>
        <source>%1 presented a certificate that this system does not trust (%2).

%3</source>
        <translation>%1 hat ein Zertifikat vorgelegt, dem dieses System nicht vertraut (%2).

%3</translation>
    </message>
    <message>
        <source>%1 presented another certificate than the one trusted for this connection.

Trusted SHA-256: %2
Presented SHA-256: %3

A server that got a new certificate looks like this, and so does someone intercepting the connection. Trust the new certificate only if you know that it was replaced.

%4</source>
        <translation>%1 hat ein anderes Zertifikat vorgelegt als das, dem für diese Verbindung vertraut wird.

Vertrauter SHA-256: %2
Vorgelegter SHA-256: %3

So sieht ein Server aus, der ein neues Zertifikat erhalten hat, aber auch jemand, der die Verbindung abfängt. Vertrauen Sie dem neuen Zertifikat nur, wenn Sie wissen, dass es ersetzt wurde.

%4</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted!</source>
        <translation>Dem Zertifikat des Servers wird nicht vertraut!</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has changed!</source>
        <translation>Das Zertifikat des Servers hat sich geändert!</translation>
    </message>
    <message>
        <source>The server no longer knows this search.</source>
        <translation>Der Server kennt diese Suche nicht mehr.</translation>
    </message>
    <message>
        <source>The server refused the search request.</source>
        <translation>Der Server hat die Suchanfrage abgelehnt.</translation>
    </message>
</context>
<context>
    <name>HTTPSRedirectSuggestion</name>
    <message>
        <source>Use a secure connection address?</source>
        <translation>Eine sichere Verbindungsadresse verwenden?</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t establish a secure connection to %1.

The server answers on this port over plain HTTP and redirects to %2.

The new address passed the secure connection check.</source>
        <translation>Quillo konnte keine sichere Verbindung zu %1 herstellen.

Der Server antwortet auf diesem Port über unverschlüsseltes HTTP und leitet zu %2 weiter.

Die neue Adresse hat die Prüfung der sicheren Verbindung bestanden.</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>%1 verwenden</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>InternalError</name>
    <message>
        <source>Server with these settings already exists!</source>
        <translation>Ein Server mit diesen Einstellungen existiert bereits!</translation>
    </message>
    <message>
        <source>Failed to resolve path mapping!</source>
        <translation>Die Pfadzuordnung konnte nicht aufgelöst werden!</translation>
    </message>
    <message>
        <source>Quillo did not connect to the server.</source>
        <translation>Quillo hat sich nicht mit dem Server verbunden.</translation>
    </message>
    <message>
        <source>No access or path mapping found for: &quot;%1&quot;.</source>
        <translation>Kein Zugriff und keine Pfadzuordnung für „%1“.</translation>
    </message>
    <message>
        <source>Its certificate was not trusted. The connection is kept: connect to it again to see the certificate and decide anew.</source>
        <translation>Seinem Zertifikat wurde nicht vertraut. Die Verbindung bleibt erhalten: Verbinden Sie sich erneut, um das Zertifikat zu sehen und neu zu entscheiden.</translation>
    </message>
    <message>
        <source>Check your path mapping settings.</source>
        <translation>Prüfen Sie Ihre Einstellungen der Pfadzuordnung.</translation>
    </message>
</context>
<context>
    <name>KeychainStore</name>
    <message>
        <source>Keychain data is corrupted</source>
        <translation>Die Daten im Schlüsselbund sind beschädigt</translation>
    </message>
    <message>
        <source>The stored credential is not text.</source>
        <translation>Die gespeicherte Zugangsangabe ist kein Text.</translation>
    </message>
    <message>
        <source>The keyring is locked, or no keyring service such as GNOME Keyring or KWallet is running. Unlock or start it, then log in again.</source>
        <translation>Der Schlüsselbund ist gesperrt, oder kein Schlüsselbunddienst wie GNOME Keyring oder KWallet läuft. Entsperren oder starten Sie ihn und melden Sie sich erneut an.</translation>
    </message>
    <message>
        <source>Keychain error %1: %2</source>
        <translation>Schlüsselbundfehler %1: %2</translation>
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
    <name>LocalDaemonFlow</name>
    <message>
        <source>Uninstall qBittorrent from %1</source>
        <translation>qBittorrent von %1 deinstallieren</translation>
    </message>
    <message>
        <source>Quillo will stop qBittorrent and remove it from this computer. The connection and its password are removed from Quillo.
Downloaded files and qBittorrent settings are kept for a future installation.</source>
        <translation>Quillo beendet qBittorrent und entfernt es von diesem Computer. Die Verbindung und ihr Passwort werden aus Quillo entfernt.
Heruntergeladene Dateien und die Einstellungen von qBittorrent bleiben für eine spätere Installation erhalten.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>qBittorrent is stopped, but not removed</source>
        <translation>qBittorrent ist beendet, aber nicht entfernt</translation>
    </message>
    <message>
        <source>The uninstall command is copied to the clipboard. Open a terminal, paste the command with Ctrl+Shift+V and press Return.

</source>
        <translation>Der Deinstallationsbefehl wurde in die Zwischenablage kopiert. Öffnen Sie ein Terminal, fügen Sie den Befehl mit Strg+Umschalt+V ein und drücken Sie die Eingabetaste.

</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t open a terminal. qBittorrent wasn&apos;t uninstalled.</source>
        <translation>Quillo konnte kein Terminal öffnen. qBittorrent wurde nicht deinstalliert.</translation>
    </message>
    <message>
        <source>The installer script is missing from the installation.</source>
        <translation>Das Installationsskript fehlt in der Installation.</translation>
    </message>
</context>
<context>
    <name>LocalDaemonInstaller</name>
    <message>
        <source>This Mac</source>
        <translation>Dieser Mac</translation>
    </message>
    <message>
        <source>This Computer</source>
        <translation>Dieser Computer</translation>
    </message>
    <message>
        <source>The installer script is missing from the installation.</source>
        <translation>Das Installationsskript fehlt in der Installation.</translation>
    </message>
    <message>
        <source>No free port found in range %1–%2. Close what uses these ports, then try again.</source>
        <translation>Kein freier Port im Bereich %1–%2. Beenden Sie, was diese Ports belegt, und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t open a terminal.</source>
        <translation>Quillo konnte kein Terminal öffnen.</translation>
    </message>
    <message>
        <source>qBittorrent didn&apos;t respond. Check the terminal window for errors.</source>
        <translation>qBittorrent hat nicht geantwortet. Prüfen Sie das Terminalfenster auf Fehler.</translation>
    </message>
    <message>
        <source>qBittorrent didn&apos;t accept the new password. Check the terminal window for errors.</source>
        <translation>qBittorrent hat das neue Passwort nicht angenommen. Prüfen Sie das Terminalfenster auf Fehler.</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t save the qBittorrent password to the keyring.</source>
        <translation>Quillo konnte das qBittorrent-Passwort nicht im Schlüsselbund speichern.</translation>
    </message>
</context>
<context>
    <name>LocalDaemonSheet</name>
    <message>
        <source>Install on %1</source>
        <translation>Auf %1 installieren</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Attempt %1 of %2.</source>
        <translation>Versuch %1 von %2.</translation>
    </message>
    <message>
        <source>Preparing the installation…</source>
        <translation>Installation wird vorbereitet…</translation>
    </message>
    <message>
        <source>Downloads go to the Torrents folder in your home folder.</source>
        <translation>Downloads landen im Ordner „Torrents“ in Ihrem persönlichen Ordner.</translation>
    </message>
    <message>
        <source>Waiting for qBittorrent to start…</source>
        <translation>Warte auf den Start von qBittorrent…</translation>
    </message>
    <message>
        <source>Quillo couldn&apos;t find a terminal to run the installation</source>
        <translation>Quillo hat kein Terminal gefunden, um die Installation auszuführen</translation>
    </message>
    <message>
        <source>The install command is copied to the clipboard.
Open a terminal, paste the command with Ctrl+Shift+V and press Return. Quillo connects to qBittorrent as soon as it starts.
</source>
        <translation>Der Installationsbefehl wurde in die Zwischenablage kopiert.
Öffnen Sie ein Terminal, fügen Sie den Befehl mit Strg+Umschalt+V ein und drücken Sie die Eingabetaste. Quillo verbindet sich mit qBittorrent, sobald es läuft.
</translation>
    </message>
    <message>
        <source>qBittorrent wasn&apos;t installed</source>
        <translation>qBittorrent wurde nicht installiert</translation>
    </message>
</context>
<context>
    <name>LogMessageTableModel</name>
    <message>
        <source>Normal Messages</source>
        <translation>Normale Meldungen</translation>
    </message>
    <message>
        <source>Information Messages</source>
        <translation>Informationsmeldungen</translation>
    </message>
    <message>
        <source>Warning Messages</source>
        <translation>Warnmeldungen</translation>
    </message>
    <message>
        <source>Critical Messages</source>
        <translation>Kritische Meldungen</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
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
    <message>
        <source>RSS</source>
        <translation>RSS</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>No Connection</source>
        <translation>Keine Verbindung</translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation>Verbunden mit %1</translation>
    </message>
    <message>
        <source>Connecting to %1…</source>
        <translation>Verbinde mit %1…</translation>
    </message>
    <message>
        <source>Not connected to %1</source>
        <translation>Nicht verbunden mit %1</translation>
    </message>
    <message>
        <source>Log Out</source>
        <translation>Abmelden</translation>
    </message>
    <message>
        <source>Log In</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Updating…</source>
        <translation>Wird aktualisiert…</translation>
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
    <name>MultipartWriter</name>
    <message>
        <source>Could not read &quot;%1&quot;: %2</source>
        <translation>„%1“ konnte nicht gelesen werden: %2</translation>
    </message>
</context>
<context>
    <name>NetworkInterface</name>
    <message>
        <source>Any interface</source>
        <translation>Jede Schnittstelle</translation>
    </message>
    <message>
        <source>All addresses</source>
        <translation>Alle Adressen</translation>
    </message>
    <message>
        <source>All IPv4 addresses</source>
        <translation>Alle IPv4-Adressen</translation>
    </message>
    <message>
        <source>All IPv6 addresses</source>
        <translation>Alle IPv6-Adressen</translation>
    </message>
</context>
<context>
    <name>PathMappingPage</name>
    <message>
        <source>Add Path Mapping</source>
        <translation>Pfadzuordnung hinzufügen</translation>
    </message>
    <message>
        <source>Remove Path Mapping</source>
        <translation>Pfadzuordnung entfernen</translation>
    </message>
    <message>
        <source>Map server paths to local folders on your computer</source>
        <translation>Serverpfade Ordnern auf Ihrem Computer zuordnen</translation>
    </message>
    <message>
        <source>Remote Path</source>
        <translation>Entfernter Pfad</translation>
    </message>
    <message>
        <source>Local Path</source>
        <translation>Lokaler Pfad</translation>
    </message>
    <message>
        <source>Path mapping lets Quillo locate torrent files on your computer when qBittorrent sees a different file system, for example when it runs on a remote server or inside a Docker container.</source>
        <translation>Mit der Pfadzuordnung findet Quillo Torrent-Dateien auf Ihrem Computer, wenn qBittorrent ein anderes Dateisystem sieht, etwa wenn es auf einem entfernten Server oder in einem Docker-Container läuft.</translation>
    </message>
    <message>
        <source>Remote Path is the path as qBittorrent reports it, such as the default save path or a torrent&apos;s save path. Local Path is the folder on your computer where those files actually live, e.g. a mounted network share.</source>
        <translation>Der entfernte Pfad ist der Pfad, wie qBittorrent ihn meldet, etwa der Standard-Speicherpfad oder der Speicherpfad eines Torrents. Der lokale Pfad ist der Ordner auf Ihrem Computer, in dem diese Dateien tatsächlich liegen, z. B. eine eingebundene Netzwerkfreigabe.</translation>
    </message>
    <message>
        <source>Add an entry for each remote path prefix you want translated. &quot;Show in File Manager&quot; uses this mapping to reveal a torrent&apos;s downloaded files.</source>
        <translation>Fügen Sie für jeden entfernten Pfadanfang, der übersetzt werden soll, einen Eintrag hinzu. „Im Dateimanager zeigen“ nutzt diese Zuordnung, um die heruntergeladenen Dateien eines Torrents zu zeigen.</translation>
    </message>
    <message>
        <source>Open torrent contents in File Manager by double-clicking or using the shortcut menu.</source>
        <translation>Öffnen Sie Torrent-Inhalte im Dateimanager per Doppelklick oder über das Kontextmenü.</translation>
    </message>
    <message>
        <source>Edit Path Mapping</source>
        <translation>Pfadzuordnung bearbeiten</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Select...</source>
        <translation>Auswählen…</translation>
    </message>
    <message>
        <source>Select the local folder that corresponds to your remote downloads</source>
        <translation>Wählen Sie den lokalen Ordner, der Ihren entfernten Downloads entspricht</translation>
    </message>
</context>
<context>
    <name>PeerLogTableModel</name>
    <message>
        <source>Banned</source>
        <translation>Gesperrt</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>IP</source>
        <translation>IP</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>TCP and μTP</source>
        <translation>TCP und μTP</translation>
    </message>
    <message>
        <source>TCP</source>
        <translation>TCP</translation>
    </message>
    <message>
        <source>μTP</source>
        <translation>μTP</translation>
    </message>
    <message>
        <source>Disable OS Cache</source>
        <comment>Disk I/O read/write mode</comment>
        <translation>Betriebssystem-Cache deaktivieren</translation>
    </message>
    <message>
        <source>Enable OS Cache</source>
        <comment>Disk I/O read/write mode</comment>
        <translation>Betriebssystem-Cache aktivieren</translation>
    </message>
    <message>
        <source>Write-Through</source>
        <comment>Disk I/O read/write mode</comment>
        <translation>Durchschreiben</translation>
    </message>
    <message>
        <source>Default</source>
        <comment>Disk I/O type</comment>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Memory mapped files</source>
        <comment>Disk I/O type</comment>
        <translation>Speicherabgebildete Dateien</translation>
    </message>
    <message>
        <source>POSIX-compliant</source>
        <comment>Disk I/O type</comment>
        <translation>POSIX-konform</translation>
    </message>
    <message>
        <source>Simple pread/pwrite</source>
        <comment>Disk I/O type</comment>
        <translation>Einfaches pread/pwrite</translation>
    </message>
    <message>
        <source>DynDNS</source>
        <translation>DynDNS</translation>
    </message>
    <message>
        <source>No-IP</source>
        <translation>No-IP</translation>
    </message>
    <message>
        <source>Allow encryption</source>
        <comment>qBittorrent encriition state</comment>
        <translation>Verschlüsselung erlauben</translation>
    </message>
    <message>
        <source>Require encryption</source>
        <comment>qBittorrent encriition state</comment>
        <translation>Verschlüsselung verlangen</translation>
    </message>
    <message>
        <source>Disable encryption</source>
        <comment>qBittorrent encriition state</comment>
        <translation>Verschlüsselung deaktivieren</translation>
    </message>
    <message>
        <source>Stop torrent</source>
        <comment>Action when reaching maximum ratio</comment>
        <translation>Torrent anhalten</translation>
    </message>
    <message>
        <source>Remove torrent</source>
        <comment>Action when reaching maximum ratio</comment>
        <translation>Torrent entfernen</translation>
    </message>
    <message>
        <source>Enable super seeding for torrent</source>
        <comment>Action when reaching maximum ratio</comment>
        <translation>Superseeding für den Torrent aktivieren</translation>
    </message>
    <message>
        <source>Remove torrent and its files</source>
        <comment>Action when reaching maximum ratio</comment>
        <translation>Torrent und seine Dateien entfernen</translation>
    </message>
    <message>
        <source>Every Day</source>
        <translation>Jeden Tag</translation>
    </message>
    <message>
        <source>Weekday</source>
        <translation>Werktags</translation>
    </message>
    <message>
        <source>Weekend</source>
        <translation>Wochenende</translation>
    </message>
    <message>
        <source>Monday</source>
        <translation>Montag</translation>
    </message>
    <message>
        <source>Tuesday</source>
        <translation>Dienstag</translation>
    </message>
    <message>
        <source>Wednesday</source>
        <translation>Mittwoch</translation>
    </message>
    <message>
        <source>Thursday</source>
        <translation>Donnerstag</translation>
    </message>
    <message>
        <source>Friday</source>
        <translation>Freitag</translation>
    </message>
    <message>
        <source>Saturday</source>
        <translation>Samstag</translation>
    </message>
    <message>
        <source>Sunday</source>
        <translation>Sonntag</translation>
    </message>
    <message>
        <source>Round-robin</source>
        <comment>Upload choking algorithm</comment>
        <translation>Reihum</translation>
    </message>
    <message>
        <source>Fastest upload</source>
        <comment>Upload choking algorithm</comment>
        <translation>Schnellster Upload</translation>
    </message>
    <message>
        <source>Anti-leech</source>
        <comment>Upload choking algorithm</comment>
        <translation>Anti-Leech</translation>
    </message>
    <message>
        <source>Fixed slots</source>
        <comment>Upload slots behavior</comment>
        <translation>Feste Slots</translation>
    </message>
    <message>
        <source>Upload rate based</source>
        <comment>Upload slots behavior</comment>
        <translation>Nach Upload-Rate</translation>
    </message>
    <message>
        <source>Prefer TCP</source>
        <comment>qBittorrent utp/tcp mixed mode</comment>
        <translation>TCP bevorzugen</translation>
    </message>
    <message>
        <source>Peer proportional (throttles TCP)</source>
        <comment>qBittorrent utp/tcp mixed mode</comment>
        <translation>Anteilig nach Peers (drosselt TCP)</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>HTTP</source>
        <translation>HTTP</translation>
    </message>
    <message>
        <source>SOCKS4</source>
        <translation>SOCKS4</translation>
    </message>
    <message>
        <source>SOCKS5</source>
        <translation>SOCKS5</translation>
    </message>
    <message>
        <source>HTTP with authentication</source>
        <translation>HTTP mit Anmeldung</translation>
    </message>
    <message>
        <source>SOCKS5 with authentication</source>
        <translation>SOCKS5 mit Anmeldung</translation>
    </message>
    <message>
        <source>SMTPS</source>
        <translation>SMTPS</translation>
    </message>
    <message>
        <source>STARTTLS</source>
        <translation>STARTTLS</translation>
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
        <source>Metadata received</source>
        <translation>Metadaten erhalten</translation>
    </message>
    <message>
        <source>Files checked</source>
        <translation>Dateien geprüft</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Downloads</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>BitTorrent</source>
        <translation>BitTorrent</translation>
    </message>
    <message>
        <source>RSS</source>
        <translation>RSS</translation>
    </message>
    <message>
        <source>Web UI</source>
        <translation>Web-Oberfläche</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>User interface language</source>
        <translation>Sprache der Oberfläche</translation>
    </message>
    <message>
        <source>Add torrents paused</source>
        <translation>Torrents pausiert hinzufügen</translation>
    </message>
    <message>
        <source>Add torrents stopped</source>
        <translation>Torrents angehalten hinzufügen</translation>
    </message>
    <message>
        <source>Delete .torrent files afterwards (0: never, 1: if added, 2: always)</source>
        <translation>.torrent-Dateien danach löschen (0: nie, 1: wenn hinzugefügt, 2: immer)</translation>
    </message>
    <message>
        <source>Pre-allocate disk space for all files</source>
        <translation>Speicherplatz für alle Dateien vorab belegen</translation>
    </message>
    <message>
        <source>Append .!qB extension to incomplete files</source>
        <translation>Unvollständigen Dateien die Endung .!qB anhängen</translation>
    </message>
    <message>
        <source>Use Automatic Torrent Management by default</source>
        <translation>Standardmäßig automatische Torrent-Verwaltung verwenden</translation>
    </message>
    <message>
        <source>Relocate a torrent when its category changes</source>
        <translation>Torrent verschieben, wenn sich seine Kategorie ändert</translation>
    </message>
    <message>
        <source>Relocate affected torrents when the default save path changes</source>
        <translation>Betroffene Torrents verschieben, wenn sich der Standard-Speicherpfad ändert</translation>
    </message>
    <message>
        <source>Relocate affected torrents when a category&apos;s save path changes</source>
        <translation>Betroffene Torrents verschieben, wenn sich der Speicherpfad einer Kategorie ändert</translation>
    </message>
    <message>
        <source>Default save path</source>
        <translation>Standard-Speicherpfad</translation>
    </message>
    <message>
        <source>Keep incomplete torrents in another folder</source>
        <translation>Unvollständige Torrents in einem anderen Ordner halten</translation>
    </message>
    <message>
        <source>Folder for incomplete torrents</source>
        <translation>Ordner für unvollständige Torrents</translation>
    </message>
    <message>
        <source>Monitored folders</source>
        <translation>Überwachte Ordner</translation>
    </message>
    <message>
        <source>Copy .torrent files to</source>
        <translation>.torrent-Dateien kopieren nach</translation>
    </message>
    <message>
        <source>Copy .torrent files for finished downloads to</source>
        <translation>.torrent-Dateien abgeschlossener Downloads kopieren nach</translation>
    </message>
    <message>
        <source>Email notification upon download completion</source>
        <translation>E-Mail-Benachrichtigung bei abgeschlossenem Download</translation>
    </message>
    <message>
        <source>Email sender</source>
        <translation>E-Mail-Absender</translation>
    </message>
    <message>
        <source>Email recipients</source>
        <translation>E-Mail-Empfänger</translation>
    </message>
    <message>
        <source>SMTP server</source>
        <translation>SMTP-Server</translation>
    </message>
    <message>
        <source>SMTP server requires a secure connection (SSL)</source>
        <translation>SMTP-Server verlangt eine sichere Verbindung (SSL)</translation>
    </message>
    <message>
        <source>SMTP encryption</source>
        <translation>SMTP-Verschlüsselung</translation>
    </message>
    <message>
        <source>SMTP server requires authentication</source>
        <translation>SMTP-Server verlangt Anmeldung</translation>
    </message>
    <message>
        <source>SMTP username</source>
        <translation>SMTP-Benutzername</translation>
    </message>
    <message>
        <source>SMTP password</source>
        <translation>SMTP-Passwort</translation>
    </message>
    <message>
        <source>Run a program when a torrent is added</source>
        <translation>Ein Programm ausführen, wenn ein Torrent hinzugefügt wird</translation>
    </message>
    <message>
        <source>Program to run when a torrent is added</source>
        <translation>Auszuführendes Programm beim Hinzufügen eines Torrents</translation>
    </message>
    <message>
        <source>Run a program when a torrent finishes</source>
        <translation>Ein Programm ausführen, wenn ein Torrent fertig ist</translation>
    </message>
    <message>
        <source>Program to run when a torrent finishes</source>
        <translation>Auszuführendes Programm, wenn ein Torrent fertig ist</translation>
    </message>
    <message>
        <source>Enable torrent queueing</source>
        <translation>Torrent-Warteschlange aktivieren</translation>
    </message>
    <message>
        <source>Maximum active checking torrents</source>
        <translation>Höchstzahl gleichzeitig geprüfter Torrents</translation>
    </message>
    <message>
        <source>Maximum active downloads</source>
        <translation>Höchstzahl aktiver Downloads</translation>
    </message>
    <message>
        <source>Maximum active torrents</source>
        <translation>Höchstzahl aktiver Torrents</translation>
    </message>
    <message>
        <source>Maximum active uploads</source>
        <translation>Höchstzahl aktiver Uploads</translation>
    </message>
    <message>
        <source>Do not count slow torrents in these limits</source>
        <translation>Langsame Torrents in diesen Begrenzungen nicht zählen</translation>
    </message>
    <message>
        <source>Download rate threshold for slow torrents (KiB/s)</source>
        <translation>Download-Schwelle für langsame Torrents (KiB/s)</translation>
    </message>
    <message>
        <source>Upload rate threshold for slow torrents (KiB/s)</source>
        <translation>Upload-Schwelle für langsame Torrents (KiB/s)</translation>
    </message>
    <message>
        <source>Torrent inactivity timer (seconds)</source>
        <translation>Inaktivitätszeit für Torrents (Sekunden)</translation>
    </message>
    <message>
        <source>Limit the share ratio</source>
        <translation>Verhältnis begrenzen</translation>
    </message>
    <message>
        <source>Share ratio limit</source>
        <translation>Begrenzung des Verhältnisses</translation>
    </message>
    <message>
        <source>Limit the inactive seeding time</source>
        <translation>Inaktive Seed-Zeit begrenzen</translation>
    </message>
    <message>
        <source>Inactive seeding time limit (minutes)</source>
        <translation>Begrenzung der inaktiven Seed-Zeit (Minuten)</translation>
    </message>
    <message>
        <source>Action when a seeding limit is reached</source>
        <translation>Aktion, wenn eine Seed-Begrenzung erreicht ist</translation>
    </message>
    <message>
        <source>Port used for incoming connections</source>
        <translation>Port für eingehende Verbindungen</translation>
    </message>
    <message>
        <source>Use UPnP / NAT-PMP port forwarding from my router</source>
        <translation>UPnP / NAT-PMP-Portweiterleitung meines Routers verwenden</translation>
    </message>
    <message>
        <source>Use a random port for incoming connections</source>
        <translation>Einen zufälligen Port für eingehende Verbindungen verwenden</translation>
    </message>
    <message>
        <source>Reannounce to all trackers when IP or port changed</source>
        <translation>Bei Änderung von IP oder Port erneut bei allen Trackern ankündigen</translation>
    </message>
    <message>
        <source>Global download rate limit</source>
        <translation>Globale Download-Begrenzung</translation>
    </message>
    <message>
        <source>Global upload rate limit</source>
        <translation>Globale Upload-Begrenzung</translation>
    </message>
    <message>
        <source>Global maximum number of connections</source>
        <translation>Globale Höchstzahl an Verbindungen</translation>
    </message>
    <message>
        <source>Maximum number of connections per torrent</source>
        <translation>Höchstzahl an Verbindungen pro Torrent</translation>
    </message>
    <message>
        <source>Global maximum number of upload slots</source>
        <translation>Globale Höchstzahl an Upload-Slots</translation>
    </message>
    <message>
        <source>Maximum number of upload slots per torrent</source>
        <translation>Höchstzahl an Upload-Slots pro Torrent</translation>
    </message>
    <message>
        <source>Stop tracker timeout (seconds; 0: disabled)</source>
        <translation>Zeitlimit für Tracker-Stopp (Sekunden; 0: deaktiviert)</translation>
    </message>
    <message>
        <source>Use piece extent affinity</source>
        <translation>Stückbereichs-Affinität verwenden</translation>
    </message>
    <message>
        <source>Peer connection protocol</source>
        <translation>Protokoll für Peer-Verbindungen</translation>
    </message>
    <message>
        <source>Apply rate limit to μTP protocol</source>
        <translation>Begrenzung auf das μTP-Protokoll anwenden</translation>
    </message>
    <message>
        <source>Apply rate limit to transport overhead</source>
        <translation>Begrenzung auf den Transport-Overhead anwenden</translation>
    </message>
    <message>
        <source>Apply rate limit to peers on LAN</source>
        <translation>Begrenzung auf Peers im LAN anwenden</translation>
    </message>
    <message>
        <source>Alternative download rate limit</source>
        <translation>Alternative Download-Begrenzung</translation>
    </message>
    <message>
        <source>Alternative upload rate limit</source>
        <translation>Alternative Upload-Begrenzung</translation>
    </message>
    <message>
        <source>Schedule the use of alternative rate limits</source>
        <translation>Verwendung der alternativen Begrenzungen planen</translation>
    </message>
    <message>
        <source>Alternative rate limits from (hour)</source>
        <translation>Alternative Begrenzungen ab (Stunde)</translation>
    </message>
    <message>
        <source>Alternative rate limits from (minute)</source>
        <translation>Alternative Begrenzungen ab (Minute)</translation>
    </message>
    <message>
        <source>Alternative rate limits to (hour)</source>
        <translation>Alternative Begrenzungen bis (Stunde)</translation>
    </message>
    <message>
        <source>Alternative rate limits to (minute)</source>
        <translation>Alternative Begrenzungen bis (Minute)</translation>
    </message>
    <message>
        <source>Days to use alternative rate limits</source>
        <translation>Tage für die alternativen Begrenzungen</translation>
    </message>
    <message>
        <source>Enable DHT (decentralized network) to find more peers</source>
        <translation>DHT (dezentrales Netzwerk) aktivieren, um mehr Peers zu finden</translation>
    </message>
    <message>
        <source>Enable Peer Exchange (PeX) to find more peers</source>
        <translation>Peer-Austausch (PeX) aktivieren, um mehr Peers zu finden</translation>
    </message>
    <message>
        <source>Enable Local Peer Discovery to find more peers</source>
        <translation>Lokale Peer-Suche aktivieren, um mehr Peers zu finden</translation>
    </message>
    <message>
        <source>Encryption mode</source>
        <translation>Verschlüsselungsmodus</translation>
    </message>
    <message>
        <source>Enable anonymous mode</source>
        <translation>Anonymen Modus aktivieren</translation>
    </message>
    <message>
        <source>Application instance name</source>
        <translation>Name der Programminstanz</translation>
    </message>
    <message>
        <source>Proxy type</source>
        <translation>Proxy-Typ</translation>
    </message>
    <message>
        <source>Proxy host</source>
        <translation>Proxy-Host</translation>
    </message>
    <message>
        <source>Proxy port</source>
        <translation>Proxy-Port</translation>
    </message>
    <message>
        <source>Use proxy for peer connections</source>
        <translation>Proxy für Peer-Verbindungen verwenden</translation>
    </message>
    <message>
        <source>Proxy requires authentication</source>
        <translation>Proxy verlangt Anmeldung</translation>
    </message>
    <message>
        <source>Proxy username</source>
        <translation>Proxy-Benutzername</translation>
    </message>
    <message>
        <source>Python executable path</source>
        <translation>Pfad der Python-Programmdatei</translation>
    </message>
    <message>
        <source>Proxy password</source>
        <translation>Proxy-Passwort</translation>
    </message>
    <message>
        <source>Perform hostname lookup via proxy</source>
        <translation>Hostnamen über den Proxy auflösen</translation>
    </message>
    <message>
        <source>Use proxy for BitTorrent purposes</source>
        <translation>Proxy für BitTorrent verwenden</translation>
    </message>
    <message>
        <source>Use proxy for general purposes</source>
        <translation>Proxy allgemein verwenden</translation>
    </message>
    <message>
        <source>Use proxy for RSS purposes</source>
        <translation>Proxy für RSS verwenden</translation>
    </message>
    <message>
        <source>Enable IP filtering</source>
        <translation>IP-Filter aktivieren</translation>
    </message>
    <message>
        <source>IP filter path (.dat, .p2p, .p2b)</source>
        <translation>Pfad des IP-Filters (.dat, .p2p, .p2b)</translation>
    </message>
    <message>
        <source>Apply IP filter to trackers</source>
        <translation>IP-Filter auf Tracker anwenden</translation>
    </message>
    <message>
        <source>Server domains</source>
        <translation>Server-Domains</translation>
    </message>
    <message>
        <source>Web UI IP address</source>
        <translation>IP-Adresse der Web-Oberfläche</translation>
    </message>
    <message>
        <source>Web UI port</source>
        <translation>Port der Web-Oberfläche</translation>
    </message>
    <message>
        <source>Use UPnP / NAT-PMP to forward the Web UI port from my router</source>
        <translation>Port der Web-Oberfläche per UPnP / NAT-PMP vom Router weiterleiten</translation>
    </message>
    <message>
        <source>Web UI username</source>
        <translation>Benutzername der Web-Oberfläche</translation>
    </message>
    <message>
        <source>Web UI password</source>
        <translation>Passwort der Web-Oberfläche</translation>
    </message>
    <message>
        <source>Enable Cross-Site Request Forgery (CSRF) protection</source>
        <translation>Schutz vor Cross-Site Request Forgery (CSRF) aktivieren</translation>
    </message>
    <message>
        <source>Enable clickjacking protection</source>
        <translation>Schutz vor Clickjacking aktivieren</translation>
    </message>
    <message>
        <source>Enable cookie Secure flag (requires HTTPS or localhost connection)</source>
        <translation>Secure-Flag für Cookies aktivieren (verlangt HTTPS oder eine Verbindung über localhost)</translation>
    </message>
    <message>
        <source>Ban client after consecutive failures</source>
        <translation>Client nach aufeinanderfolgenden Fehlversuchen sperren</translation>
    </message>
    <message>
        <source>Ban duration (seconds)</source>
        <translation>Dauer der Sperre (Sekunden)</translation>
    </message>
    <message>
        <source>Session timeout (seconds)</source>
        <translation>Zeitlimit der Sitzung (Sekunden)</translation>
    </message>
    <message>
        <source>Enable Host header validation</source>
        <translation>Prüfung des Host-Headers aktivieren</translation>
    </message>
    <message>
        <source>Bypass authentication for clients on localhost</source>
        <translation>Anmeldung für Clients auf localhost überspringen</translation>
    </message>
    <message>
        <source>Bypass authentication for clients in whitelisted IP subnets</source>
        <translation>Anmeldung für Clients in erlaubten IP-Subnetzen überspringen</translation>
    </message>
    <message>
        <source>Whitelisted IP subnets</source>
        <translation>Erlaubte IP-Subnetze</translation>
    </message>
    <message>
        <source>Use alternative Web UI</source>
        <translation>Alternative Web-Oberfläche verwenden</translation>
    </message>
    <message>
        <source>Alternative Web UI files location</source>
        <translation>Ort der Dateien der alternativen Web-Oberfläche</translation>
    </message>
    <message>
        <source>Use HTTPS instead of HTTP</source>
        <translation>HTTPS statt HTTP verwenden</translation>
    </message>
    <message>
        <source>HTTPS key</source>
        <translation>HTTPS-Schlüssel</translation>
    </message>
    <message>
        <source>HTTPS certificate</source>
        <translation>HTTPS-Zertifikat</translation>
    </message>
    <message>
        <source>HTTPS key file</source>
        <translation>HTTPS-Schlüsseldatei</translation>
    </message>
    <message>
        <source>HTTPS certificate file</source>
        <translation>HTTPS-Zertifikatsdatei</translation>
    </message>
    <message>
        <source>Update my dynamic domain name</source>
        <translation>Meinen dynamischen Domainnamen aktualisieren</translation>
    </message>
    <message>
        <source>Dynamic DNS service</source>
        <translation>Dienst für dynamisches DNS</translation>
    </message>
    <message>
        <source>Dynamic DNS username</source>
        <translation>Benutzername für dynamisches DNS</translation>
    </message>
    <message>
        <source>Dynamic DNS password</source>
        <translation>Passwort für dynamisches DNS</translation>
    </message>
    <message>
        <source>Dynamic domain name</source>
        <translation>Dynamischer Domainname</translation>
    </message>
    <message>
        <source>Feeds refresh interval (minutes)</source>
        <translation>Aktualisierungsintervall der Feeds (Minuten)</translation>
    </message>
    <message>
        <source>Same host request delay (seconds)</source>
        <translation>Verzögerung zwischen Anfragen an denselben Host (Sekunden)</translation>
    </message>
    <message>
        <source>Maximum number of articles per feed</source>
        <translation>Höchstzahl an Artikeln pro Feed</translation>
    </message>
    <message>
        <source>Enable fetching RSS feeds</source>
        <translation>Abrufen von RSS-Feeds aktivieren</translation>
    </message>
    <message>
        <source>Enable auto downloading of RSS torrents</source>
        <translation>Automatisches Herunterladen von RSS-Torrents aktivieren</translation>
    </message>
    <message>
        <source>Download REPACK/PROPER episodes</source>
        <translation>REPACK-/PROPER-Episoden herunterladen</translation>
    </message>
    <message>
        <source>Smart episode filters</source>
        <translation>Intelligente Episodenfilter</translation>
    </message>
    <message>
        <source>Automatically add these trackers to new downloads</source>
        <translation>Diese Tracker automatisch neuen Downloads hinzufügen</translation>
    </message>
    <message>
        <source>Trackers added to new downloads</source>
        <translation>Tracker für neue Downloads</translation>
    </message>
    <message>
        <source>Add custom HTTP headers</source>
        <translation>Eigene HTTP-Header hinzufügen</translation>
    </message>
    <message>
        <source>Custom HTTP headers</source>
        <translation>Eigene HTTP-Header</translation>
    </message>
    <message>
        <source>Limit the total seeding time</source>
        <translation>Gesamte Seed-Zeit begrenzen</translation>
    </message>
    <message>
        <source>Total seeding time limit (minutes)</source>
        <translation>Begrenzung der gesamten Seed-Zeit (Minuten)</translation>
    </message>
    <message>
        <source>IP address reported to trackers</source>
        <translation>An Tracker gemeldete IP-Adresse</translation>
    </message>
    <message>
        <source>Port reported to trackers (0: listening port)</source>
        <translation>An Tracker gemeldeter Port (0: Empfangsport)</translation>
    </message>
    <message>
        <source>Always announce to all tiers</source>
        <translation>Immer bei allen Ebenen ankündigen</translation>
    </message>
    <message>
        <source>Always announce to all trackers in a tier</source>
        <translation>Immer bei allen Trackern einer Ebene ankündigen</translation>
    </message>
    <message>
        <source>Asynchronous I/O threads</source>
        <translation>Threads für asynchrone E/A</translation>
    </message>
    <message>
        <source>Hashing threads</source>
        <translation>Threads für Hash-Berechnung</translation>
    </message>
    <message>
        <source>Manually banned IP addresses</source>
        <translation>Manuell gesperrte IP-Adressen</translation>
    </message>
    <message>
        <source>Outstanding memory when checking torrents (MiB)</source>
        <translation>Ausstehender Speicher beim Prüfen von Torrents (MiB)</translation>
    </message>
    <message>
        <source>Physical memory (RAM) usage limit (MiB)</source>
        <translation>Begrenzung des Arbeitsspeichers (RAM) (MiB)</translation>
    </message>
    <message>
        <source>Optional IP address to bind to</source>
        <translation>Optionale IP-Adresse zum Binden</translation>
    </message>
    <message>
        <source>Network interface</source>
        <translation>Netzwerkschnittstelle</translation>
    </message>
    <message>
        <source>Network interface name</source>
        <translation>Name der Netzwerkschnittstelle</translation>
    </message>
    <message>
        <source>Disk cache (MiB; -1: automatic)</source>
        <translation>Festplatten-Cache (MiB; -1: automatisch)</translation>
    </message>
    <message>
        <source>Disk cache expiry interval (seconds)</source>
        <translation>Ablaufintervall des Festplatten-Caches (Sekunden)</translation>
    </message>
    <message>
        <source>Embedded tracker port</source>
        <translation>Port des eingebetteten Trackers</translation>
    </message>
    <message>
        <source>Enable port forwarding for embedded tracker</source>
        <translation>Portweiterleitung für den eingebetteten Tracker aktivieren</translation>
    </message>
    <message>
        <source>Coalesce reads &amp; writes</source>
        <translation>Lese- und Schreibvorgänge zusammenfassen</translation>
    </message>
    <message>
        <source>Enable embedded tracker</source>
        <translation>Eingebetteten Tracker aktivieren</translation>
    </message>
    <message>
        <source>Allow multiple connections from the same IP address</source>
        <translation>Mehrere Verbindungen von derselben IP-Adresse erlauben</translation>
    </message>
    <message>
        <source>Enable OS cache</source>
        <translation>Betriebssystem-Cache aktivieren</translation>
    </message>
    <message>
        <source>Send upload piece suggestions</source>
        <translation>Vorschläge für Upload-Stücke senden</translation>
    </message>
    <message>
        <source>File pool size</source>
        <translation>Größe des Dateipools</translation>
    </message>
    <message>
        <source>Highest outgoing port (0: disabled)</source>
        <translation>Höchster ausgehender Port (0: deaktiviert)</translation>
    </message>
    <message>
        <source>Lowest outgoing port (0: disabled)</source>
        <translation>Niedrigster ausgehender Port (0: deaktiviert)</translation>
    </message>
    <message>
        <source>Recheck torrents on completion</source>
        <translation>Torrents nach Abschluss erneut prüfen</translation>
    </message>
    <message>
        <source>Resolve peer countries</source>
        <translation>Länder der Peers auflösen</translation>
    </message>
    <message>
        <source>Save resume data interval (minutes)</source>
        <translation>Intervall zum Speichern der Fortsetzungsdaten (Minuten)</translation>
    </message>
    <message>
        <source>Send buffer low watermark (KiB)</source>
        <translation>Untere Marke des Sendepuffers (KiB)</translation>
    </message>
    <message>
        <source>Send buffer watermark (KiB)</source>
        <translation>Marke des Sendepuffers (KiB)</translation>
    </message>
    <message>
        <source>Send buffer watermark factor (%)</source>
        <translation>Faktor der Sendepuffer-Marke (%)</translation>
    </message>
    <message>
        <source>Socket backlog size</source>
        <translation>Größe des Socket-Rückstaus</translation>
    </message>
    <message>
        <source>.torrent file size limit (bytes)</source>
        <translation>Größenbegrenzung für .torrent-Dateien (Bytes)</translation>
    </message>
    <message>
        <source>Upload choking algorithm</source>
        <translation>Upload-Drosselungsalgorithmus</translation>
    </message>
    <message>
        <source>Upload slots behavior</source>
        <translation>Verhalten der Upload-Slots</translation>
    </message>
    <message>
        <source>UPnP lease duration (seconds; 0: permanent lease)</source>
        <translation>UPnP-Leasedauer (Sekunden; 0: dauerhaft)</translation>
    </message>
    <message>
        <source>μTP-TCP mixed mode algorithm</source>
        <translation>Algorithmus für gemischten μTP-TCP-Modus</translation>
    </message>
    <message>
        <source>Refresh interval (milliseconds)</source>
        <translation>Aktualisierungsintervall (Millisekunden)</translation>
    </message>
    <message>
        <source>Resume data storage type</source>
        <translation>Speicherart der Fortsetzungsdaten</translation>
    </message>
    <message>
        <source>Torrent content removing mode</source>
        <translation>Modus zum Entfernen von Torrent-Inhalten</translation>
    </message>
    <message>
        <source>Torrent content layout</source>
        <translation>Inhaltsanordnung des Torrents</translation>
    </message>
    <message>
        <source>Add to top of queue</source>
        <translation>Oben in der Warteschlange einreihen</translation>
    </message>
    <message>
        <source>Merge trackers into the existing torrent when adding a duplicate</source>
        <translation>Beim Hinzufügen eines Duplikats die Tracker in den vorhandenen Torrent übernehmen</translation>
    </message>
    <message>
        <source>Torrent stop condition</source>
        <translation>Stoppbedingung für Torrents</translation>
    </message>
    <message>
        <source>Enable subcategories</source>
        <translation>Unterkategorien aktivieren</translation>
    </message>
    <message>
        <source>Skip files with excluded names</source>
        <translation>Dateien mit ausgeschlossenen Namen überspringen</translation>
    </message>
    <message>
        <source>Excluded file names</source>
        <translation>Ausgeschlossene Dateinamen</translation>
    </message>
    <message>
        <source>Enable reverse proxy support</source>
        <translation>Unterstützung für Reverse-Proxys aktivieren</translation>
    </message>
    <message>
        <source>Trusted proxies list</source>
        <translation>Liste vertrauenswürdiger Proxys</translation>
    </message>
    <message>
        <source>Bdecode depth limit</source>
        <translation>Tiefenbegrenzung für Bdecode</translation>
    </message>
    <message>
        <source>Bdecode token limit</source>
        <translation>Token-Begrenzung für Bdecode</translation>
    </message>
    <message>
        <source>Disk queue size (bytes)</source>
        <translation>Größe der Festplatten-Warteschlange (Bytes)</translation>
    </message>
    <message>
        <source>Disk IO type</source>
        <translation>Art der Festplatten-E/A</translation>
    </message>
    <message>
        <source>Disk IO read mode</source>
        <translation>Lesemodus der Festplatten-E/A</translation>
    </message>
    <message>
        <source>Disk IO write mode</source>
        <translation>Schreibmodus der Festplatten-E/A</translation>
    </message>
    <message>
        <source>Outgoing connections per second</source>
        <translation>Ausgehende Verbindungen pro Sekunde</translation>
    </message>
    <message>
        <source>Socket send buffer size (bytes; 0: system default)</source>
        <translation>Größe des Socket-Sendepuffers (Bytes; 0: Systemvorgabe)</translation>
    </message>
    <message>
        <source>Socket receive buffer size (bytes; 0: system default)</source>
        <translation>Größe des Socket-Empfangspuffers (Bytes; 0: Systemvorgabe)</translation>
    </message>
    <message>
        <source>Differentiated Services Code Point (DSCP) for connections to peers</source>
        <translation>Differentiated Services Code Point (DSCP) für Verbindungen zu Peers</translation>
    </message>
    <message>
        <source>Support internationalized domain names (IDN)</source>
        <translation>Internationalisierte Domainnamen (IDN) unterstützen</translation>
    </message>
    <message>
        <source>Validate HTTPS tracker certificates</source>
        <translation>Zertifikate von HTTPS-Trackern prüfen</translation>
    </message>
    <message>
        <source>Server-side request forgery (SSRF) mitigation</source>
        <translation>Schutz vor Server-Side Request Forgery (SSRF)</translation>
    </message>
    <message>
        <source>Disallow connections to peers on privileged ports</source>
        <translation>Verbindungen zu Peers auf privilegierten Ports verbieten</translation>
    </message>
    <message>
        <source>Maximum concurrent HTTP announces</source>
        <translation>Höchstzahl gleichzeitiger HTTP-Ankündigungen</translation>
    </message>
    <message>
        <source>Peer turnover disconnect percentage</source>
        <translation>Prozentsatz getrennter Peers beim Austausch</translation>
    </message>
    <message>
        <source>Peer turnover threshold percentage</source>
        <translation>Schwellenwert für den Peer-Austausch (Prozent)</translation>
    </message>
    <message>
        <source>Peer turnover disconnect interval (seconds)</source>
        <translation>Intervall des Peer-Austauschs (Sekunden)</translation>
    </message>
    <message>
        <source>Maximum outstanding requests to a single peer</source>
        <translation>Höchstzahl ausstehender Anfragen an einen Peer</translation>
    </message>
    <message>
        <source>DHT bootstrap nodes</source>
        <translation>DHT-Startknoten</translation>
    </message>
    <message>
        <source>I2P inbound quantity</source>
        <translation>I2P-Anzahl eingehend</translation>
    </message>
    <message>
        <source>I2P outbound quantity</source>
        <translation>I2P-Anzahl ausgehend</translation>
    </message>
    <message>
        <source>I2P inbound length</source>
        <translation>I2P-Länge eingehend</translation>
    </message>
    <message>
        <source>I2P outbound length</source>
        <translation>I2P-Länge ausgehend</translation>
    </message>
    <message>
        <source>Web UI API key</source>
        <translation>API-Schlüssel der Web-Oberfläche</translation>
    </message>
    <message>
        <source>Monitored Folder</source>
        <translation>Überwachter Ordner</translation>
    </message>
    <message>
        <source>Default Save Path</source>
        <translation>Standard-Speicherpfad</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Anderer</translation>
    </message>
    <message>
        <source>Path to save torrents by “Monitored Folder“ function</source>
        <translation>Pfad zum Speichern von Torrents aus der Funktion „Überwachter Ordner“</translation>
    </message>
</context>
<context>
    <name>PreferencesPage</name>
    <message>
        <source>This server has no preferences of this group.</source>
        <translation>Dieser Server hat keine Einstellungen in dieser Gruppe.</translation>
    </message>
    <message>
        <source> KiB/s</source>
        <translation> KiB/s</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>Keine Begrenzung</translation>
    </message>
    <message>
        <source>%1 must not be empty.</source>
        <translation>%1 darf nicht leer sein.</translation>
    </message>
    <message>
        <source>Monitored Folder</source>
        <translation>Überwachter Ordner</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>Speichern in</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Remove Folder</source>
        <translation>Ordner entfernen</translation>
    </message>
</context>
<context>
    <name>QBTPreferences</name>
    <message>
        <source>The server&apos;s &quot;%1&quot; is %2, not %3.</source>
        <translation>„%1“ des Servers ist %2, nicht %3.</translation>
    </message>
    <message>
        <source>The server&apos;s &quot;%1&quot; gives the folder &quot;%2&quot; %3, not 0, 1 or a path.</source>
        <translation>„%1“ des Servers gibt dem Ordner „%2“ %3, nicht 0, 1 oder einen Pfad.</translation>
    </message>
    <message>
        <source>The preferences are not a JSON object.</source>
        <translation>Die Einstellungen sind kein JSON-Objekt.</translation>
    </message>
</context>
<context>
    <name>QuilloSettingsPage</name>
    <message>
        <source>Updates from the server</source>
        <translation>Aktualisierungen vom Server</translation>
    </message>
    <message>
        <source>Follow the server&apos;s refresh interval</source>
        <translation>Dem Aktualisierungsintervall des Servers folgen</translation>
    </message>
    <message>
        <source>Refresh interval:</source>
        <translation>Aktualisierungsintervall:</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source>In the background, slower by:</source>
        <translation>Im Hintergrund langsamer um:</translation>
    </message>
    <message>
        <source>Speeds averaged over:</source>
        <translation>Geschwindigkeiten gemittelt über:</translation>
    </message>
    <message>
        <source> samples</source>
        <translation> Messwerte</translation>
    </message>
    <message>
        <source>Torrents</source>
        <translation>Torrents</translation>
    </message>
    <message>
        <source>Ask before removing torrents</source>
        <translation>Vor dem Entfernen von Torrents fragen</translation>
    </message>
    <message>
        <source>Alternate row colors</source>
        <translation>Zeilen abwechselnd färben</translation>
    </message>
    <message>
        <source>Status bar</source>
        <translation>Statusleiste</translation>
    </message>
    <message>
        <source>Session totals</source>
        <translation>Summen der Sitzung</translation>
    </message>
    <message>
        <source>All-time totals</source>
        <translation>Summen insgesamt</translation>
    </message>
    <message>
        <source>Free disk space</source>
        <translation>Freier Speicherplatz</translation>
    </message>
    <message>
        <source>Global ratio</source>
        <translation>Gesamtverhältnis</translation>
    </message>
    <message>
        <source>Tray</source>
        <translation>Infobereich</translation>
    </message>
    <message>
        <source>Close to tray</source>
        <translation>Beim Schließen in den Infobereich</translation>
    </message>
    <message>
        <source>Start minimized</source>
        <translation>Minimiert starten</translation>
    </message>
    <message>
        <source>Updates of Quillo</source>
        <translation>Aktualisierungen von Quillo</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Täglich</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Wöchentlich</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Monatlich</translation>
    </message>
    <message>
        <source>Check for updates:</source>
        <translation>Nach Aktualisierungen suchen:</translation>
    </message>
    <message>
        <source>Adding torrents</source>
        <translation>Torrents hinzufügen</translation>
    </message>
    <message>
        <source>Show the add window before adding</source>
        <translation>Vor dem Hinzufügen das Fenster zum Hinzufügen zeigen</translation>
    </message>
    <message>
        <source>Move the .torrent file to the trash once added</source>
        <translation>Die .torrent-Datei nach dem Hinzufügen in den Papierkorb verschieben</translation>
    </message>
    <message>
        <source>Also when the adding is cancelled</source>
        <translation>Auch wenn das Hinzufügen abgebrochen wird</translation>
    </message>
    <message>
        <source>Finished downloads</source>
        <translation>Abgeschlossene Downloads</translation>
    </message>
    <message>
        <source>Notify when downloads complete</source>
        <translation>Benachrichtigen, wenn Downloads abgeschlossen sind</translation>
    </message>
    <message>
        <source>Sound:</source>
        <translation>Klang:</translation>
    </message>
    <message>
        <source>Ask for attention</source>
        <translation>Um Aufmerksamkeit bitten</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>At a fixed interval</source>
        <translation>In festem Abstand</translation>
    </message>
    <message>
        <source>Adapt to the server&apos;s speed</source>
        <translation>Dem Tempo des Servers anpassen</translation>
    </message>
    <message>
        <source>Refresh:</source>
        <translation>Aktualisieren:</translation>
    </message>
    <message>
        <source>Adapting waits at least seven times as long as the server took to answer, and never less than the refresh interval: a slow server spends at most an eighth of its time on Quillo.</source>
        <translation>Beim Anpassen wartet Quillo mindestens siebenmal so lange, wie der Server für seine Antwort gebraucht hat, und nie kürzer als das Aktualisierungsintervall: Ein langsamer Server verbringt höchstens ein Achtel seiner Zeit mit Quillo.</translation>
    </message>
    <message>
        <source>Remember torrent lists between starts</source>
        <translation>Torrent-Listen zwischen Starts merken</translation>
    </message>
    <message>
        <source>Forget</source>
        <translation>Vergessen</translation>
    </message>
    <message>
        <source>Removes the torrent lists kept on this computer to show them at once on the next start.</source>
        <translation>Entfernt die auf diesem Computer gespeicherten Torrent-Listen, die beim nächsten Start sofort angezeigt werden.</translation>
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
    <name>RssArticleModel</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Feed</source>
        <translation>Feed</translation>
    </message>
</context>
<context>
    <name>RssLoader</name>
    <message>
        <source>Failed to get the RSS feeds.</source>
        <translation>Die RSS-Feeds konnten nicht abgefragt werden.</translation>
    </message>
</context>
<context>
    <name>RssOperations</name>
    <message>
        <source>Failed to add the RSS feed.</source>
        <translation>Der RSS-Feed konnte nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to add the folder.</source>
        <translation>Der Ordner konnte nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to move or rename the RSS item.</source>
        <translation>Der RSS-Eintrag konnte nicht verschoben oder umbenannt werden.</translation>
    </message>
    <message>
        <source>Failed to remove the RSS item.</source>
        <translation>Der RSS-Eintrag konnte nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Failed to change the feed&apos;s URL.</source>
        <translation>Die URL des Feeds konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>Failed to refresh the RSS feeds.</source>
        <translation>Die RSS-Feeds konnten nicht aktualisiert werden.</translation>
    </message>
    <message>
        <source>Failed to mark the articles as read.</source>
        <translation>Die Artikel konnten nicht als gelesen markiert werden.</translation>
    </message>
    <message>
        <source>Failed to get the download rules.</source>
        <translation>Die Downloadregeln konnten nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to save the download rule.</source>
        <translation>Die Downloadregel konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Failed to rename the download rule.</source>
        <translation>Die Downloadregel konnte nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>Failed to remove the download rule.</source>
        <translation>Die Downloadregel konnte nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Failed to get the matching articles.</source>
        <translation>Die passenden Artikel konnten nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get the server&apos;s RSS settings.</source>
        <translation>Die RSS-Einstellungen des Servers konnten nicht abgefragt werden.</translation>
    </message>
</context>
<context>
    <name>RssRuleForm</name>
    <message>
        <source>Enabled</source>
        <translation>Aktiviert</translation>
    </message>
    <message>
        <source>Use regular expressions</source>
        <translation>Reguläre Ausdrücke verwenden</translation>
    </message>
    <message>
        <source>Use smart episode filter</source>
        <translation>Intelligenten Episodenfilter verwenden</translation>
    </message>
    <message>
        <source>Add stopped</source>
        <translation>Angehalten hinzufügen</translation>
    </message>
    <message>
        <source>Partly checked: as the server adds torrents.</source>
        <translation>Teilweise markiert: wie der Server Torrents hinzufügt.</translation>
    </message>
    <message>
        <source>Seasons and episodes to download, e.g. 1x2;8-15;5;30-; for season 1.</source>
        <translation>Herunterzuladende Staffeln und Episoden, z. B. 1x2;8-15;5;30-; für Staffel 1.</translation>
    </message>
    <message>
        <source>The server&apos;s default</source>
        <translation>Standard des Servers</translation>
    </message>
    <message>
        <source>Must contain:</source>
        <translation>Muss enthalten:</translation>
    </message>
    <message>
        <source>Must not contain:</source>
        <translation>Darf nicht enthalten:</translation>
    </message>
    <message>
        <source>Episode filter:</source>
        <translation>Episodenfilter:</translation>
    </message>
    <message>
        <source>Category:</source>
        <translation>Kategorie:</translation>
    </message>
    <message>
        <source>Save to:</source>
        <translation>Speichern unter:</translation>
    </message>
    <message>
        <source>Apply to feeds:</source>
        <translation>Auf Feeds anwenden:</translation>
    </message>
    <message>
        <source> days</source>
        <translation> Tage</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>After a match, the rule downloads nothing more for this many days.</source>
        <translation>Nach einem Treffer lädt die Regel so viele Tage lang nichts mehr herunter.</translation>
    </message>
    <message>
        <source>Ignore later matches for:</source>
        <translation>Spätere Treffer ignorieren für:</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
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
        <source>Content layout:</source>
        <translation>Inhaltslayout:</translation>
    </message>
    <message>
        <source>Tags:</source>
        <translation>Tags:</translation>
    </message>
    <message>
        <source>This server&apos;s download rules cannot assign tags.</source>
        <translation>Die Downloadregeln dieses Servers können keine Tags vergeben.</translation>
    </message>
</context>
<context>
    <name>RssRulesDialog</name>
    <message>
        <source>Save Rule</source>
        <translation>Regel speichern</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>Umbenennen...</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>RSS Download Rules</source>
        <translation>RSS-Downloadregeln</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>Hinzufügen...</translation>
    </message>
    <message>
        <source>Matching articles (as saved)</source>
        <translation>Passende Artikel (wie gespeichert)</translation>
    </message>
    <message>
        <source>The server has no download rules.</source>
        <translation>Der Server hat keine Downloadregeln.</translation>
    </message>
    <message>
        <source>No article matches.</source>
        <translation>Kein Artikel passt.</translation>
    </message>
    <message>
        <source>New Rule</source>
        <translation>Neue Regel</translation>
    </message>
    <message>
        <source>Rule name:</source>
        <translation>Name der Regel:</translation>
    </message>
    <message>
        <source>A rule named &quot;%1&quot; exists already.</source>
        <translation>Eine Regel namens „%1“ gibt es bereits.</translation>
    </message>
    <message>
        <source>Rename Rule</source>
        <translation>Regel umbenennen</translation>
    </message>
    <message>
        <source>New name:</source>
        <translation>Neuer Name:</translation>
    </message>
    <message>
        <source>Remove Rule</source>
        <translation>Regel entfernen</translation>
    </message>
    <message>
        <source>Remove the download rule &quot;%1&quot;?</source>
        <translation>Die Downloadregel „%1“ entfernen?</translation>
    </message>
</context>
<context>
    <name>RssTreeModel</name>
    <message>
        <source>Feeds</source>
        <translation>Feeds</translation>
    </message>
</context>
<context>
    <name>RssWindow</name>
    <message>
        <source>Mark as Read</source>
        <translation>Als gelesen markieren</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Link öffnen</translation>
    </message>
    <message>
        <source>RSS</source>
        <translation>RSS</translation>
    </message>
    <message>
        <source>Add Feed...</source>
        <translation>Feed hinzufügen...</translation>
    </message>
    <message>
        <source>Add Folder...</source>
        <translation>Ordner hinzufügen...</translation>
    </message>
    <message>
        <source>Refresh All</source>
        <translation>Alle aktualisieren</translation>
    </message>
    <message>
        <source>Download Rules...</source>
        <translation>Downloadregeln...</translation>
    </message>
    <message>
        <source>RSS processing is off on this server: it keeps feeds and rules, but fetches no articles until it is turned on in the server&apos;s preferences.</source>
        <translation>Die RSS-Verarbeitung ist auf diesem Server ausgeschaltet: Er behält Feeds und Regeln, ruft aber keine Artikel ab, bis sie in den Einstellungen des Servers eingeschaltet wird.</translation>
    </message>
    <message>
        <source>The server did not say whether it processes RSS feeds: articles may not be fetched.</source>
        <translation>Der Server hat nicht mitgeteilt, ob er RSS-Feeds verarbeitet: Möglicherweise werden keine Artikel abgerufen.</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>Umbenennen...</translation>
    </message>
    <message>
        <source>Move To...</source>
        <translation>Verschieben nach...</translation>
    </message>
    <message>
        <source>Change Feed URL...</source>
        <translation>Feed-URL ändern...</translation>
    </message>
    <message>
        <source>Remove...</source>
        <translation>Entfernen...</translation>
    </message>
    <message>
        <source>Add Feed</source>
        <translation>Feed hinzufügen</translation>
    </message>
    <message>
        <source>Feed URL:</source>
        <translation>Feed-URL:</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Folder name:</source>
        <translation>Ordnername:</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>New name:</source>
        <translation>Neuer Name:</translation>
    </message>
    <message>
        <source>(top level)</source>
        <translation>(oberste Ebene)</translation>
    </message>
    <message>
        <source>Move To</source>
        <translation>Verschieben nach</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>Change Feed URL</source>
        <translation>Feed-URL ändern</translation>
    </message>
    <message>
        <source>Remove the folder &quot;%1&quot; with every feed in it?</source>
        <translation>Den Ordner „%1“ mit allen Feeds darin entfernen?</translation>
    </message>
    <message>
        <source>Remove the feed &quot;%1&quot; and its articles?</source>
        <translation>Den Feed „%1“ und seine Artikel entfernen?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>SearchJob</name>
    <message>
        <source>The server&apos;s results no longer match those shown.</source>
        <translation>Die Ergebnisse des Servers passen nicht mehr zu den angezeigten.</translation>
    </message>
</context>
<context>
    <name>SearchPlugins</name>
    <message>
        <source>All categories</source>
        <translation>Alle Kategorien</translation>
    </message>
    <message>
        <source>The server did not install %1. It installs only .py search plugins it can read on its own computer; its log says why.</source>
        <translation>Der Server hat %1 nicht installiert. Er installiert nur .py-Such-Plugins, die er auf seinem eigenen Computer lesen kann; sein Protokoll nennt den Grund.</translation>
    </message>
</context>
<context>
    <name>SearchPluginsDialog</name>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>Deinstallieren</translation>
    </message>
    <message>
        <source>Update All</source>
        <translation>Alle aktualisieren</translation>
    </message>
    <message>
        <source>Search Plugins</source>
        <translation>Such-Plugins</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>URL</source>
        <translation>URL</translation>
    </message>
    <message>
        <source>Categories</source>
        <translation>Kategorien</translation>
    </message>
    <message>
        <source>A plugin&apos;s URL, or the path of its .py file on the server&apos;s computer</source>
        <translation>Die URL eines Plugins oder der Pfad seiner .py-Datei auf dem Computer des Servers</translation>
    </message>
    <message>
        <source>Failed to enable the plugin.</source>
        <translation>Das Plugin konnte nicht aktiviert werden.</translation>
    </message>
    <message>
        <source>Failed to disable the plugin.</source>
        <translation>Das Plugin konnte nicht deaktiviert werden.</translation>
    </message>
    <message>
        <source>Failed to install the plugin.</source>
        <translation>Das Plugin konnte nicht installiert werden.</translation>
    </message>
    <message>
        <source>Failed to get the search plugins.</source>
        <translation>Die Such-Plugins konnten nicht abgerufen werden.</translation>
    </message>
    <message>
        <source>Failed to uninstall the plugin.</source>
        <translation>Das Plugin konnte nicht deinstalliert werden.</translation>
    </message>
    <message>
        <source>Failed to update the plugins.</source>
        <translation>Die Plugins konnten nicht aktualisiert werden.</translation>
    </message>
</context>
<context>
    <name>SearchResultsModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Seeders</source>
        <translation>Seeder</translation>
    </message>
    <message>
        <source>Leechers</source>
        <translation>Leecher</translation>
    </message>
    <message>
        <source>Search engine</source>
        <translation>Suchmaschine</translation>
    </message>
    <message>
        <source>Published</source>
        <translation>Veröffentlicht</translation>
    </message>
</context>
<context>
    <name>SearchRunner</name>
    <message>
        <source>Quillo is not connected to a server.</source>
        <translation>Quillo ist mit keinem Server verbunden.</translation>
    </message>
    <message>
        <source>Failed to get the search results.</source>
        <translation>Die Suchergebnisse konnten nicht abgerufen werden.</translation>
    </message>
</context>
<context>
    <name>SearchTab</name>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Open description page</source>
        <translation>Beschreibungsseite öffnen</translation>
    </message>
    <message>
        <source>Filter results by name</source>
        <translation>Ergebnisse nach Namen filtern</translation>
    </message>
    <message>
        <source>Starting…</source>
        <translation>Wird gestartet …</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Running, results: %1</source>
        <translation>Läuft, Ergebnisse: %1</translation>
    </message>
    <message>
        <source>Finished, results: %1</source>
        <translation>Beendet, Ergebnisse: %1</translation>
    </message>
    <message>
        <source>Stopped, results: %1</source>
        <translation>Gestoppt, Ergebnisse: %1</translation>
    </message>
</context>
<context>
    <name>SearchWindow</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Plugins...</source>
        <translation>Plugins...</translation>
    </message>
    <message>
        <source>Search for torrents</source>
        <translation>Nach Torrents suchen</translation>
    </message>
    <message>
        <source>Failed to get the search plugins.</source>
        <translation>Die Such-Plugins konnten nicht abgerufen werden.</translation>
    </message>
    <message>
        <source>Connect to a server to search.</source>
        <translation>Verbinden Sie sich mit einem Server, um zu suchen.</translation>
    </message>
    <message>
        <source>Reading the server&apos;s search plugins…</source>
        <translation>Die Such-Plugins des Servers werden gelesen …</translation>
    </message>
    <message>
        <source>This server cannot search.

qBittorrent searches through plugins written in Python, and the server&apos;s computer has no Python it can use. Install Python 3 there and start qBittorrent again; its search plugins can then be installed from this window.</source>
        <translation>Dieser Server kann nicht suchen.

qBittorrent sucht über Plugins, die in Python geschrieben sind, und auf dem Computer des Servers gibt es kein Python, das es verwenden kann. Installieren Sie dort Python 3 und starten Sie qBittorrent neu; danach lassen sich seine Such-Plugins in diesem Fenster installieren.</translation>
    </message>
    <message>
        <source>Only enabled</source>
        <translation>Nur aktivierte</translation>
    </message>
    <message>
        <source>All plugins</source>
        <translation>Alle Plugins</translation>
    </message>
    <message>
        <source>The server has no search plugins yet: Plugins... installs them.</source>
        <translation>Der Server hat noch keine Such-Plugins: „Plugins...“ installiert sie.</translation>
    </message>
    <message>
        <source>Every search plugin is disabled: enable one in Plugins..., or search with All plugins.</source>
        <translation>Alle Such-Plugins sind deaktiviert: Aktivieren Sie eines unter „Plugins...“ oder suchen Sie mit „Alle Plugins“.</translation>
    </message>
</context>
<context>
    <name>ServerCertificate</name>
    <message>
        <source>SHA-256: %1
Subject: %2
Issuer: %3
Valid from %4 until %5</source>
        <translation>SHA-256: %1
Inhaber: %2
Aussteller: %3
Gültig von %4 bis %5</translation>
    </message>
</context>
<context>
    <name>ServerLogLoader</name>
    <message>
        <source>Failed to get the server&apos;s log.</source>
        <translation>Das Protokoll des Servers konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Failed to get the server&apos;s blocked peers.</source>
        <translation>Die vom Server blockierten Peers konnten nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>ServerLogWindow</name>
    <message>
        <source>Server Log</source>
        <translation>Server-Protokoll</translation>
    </message>
    <message>
        <source>Execution Log</source>
        <translation>Ausführungs-Log</translation>
    </message>
    <message>
        <source>Blocked IPs</source>
        <translation>Geblockte IPs</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Empties this window; the server keeps its log.</source>
        <translation>Leert dieses Fenster; der Server behält sein Protokoll.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
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
    <message>
        <source>All remote connections and their saved passwords will be deleted. This action can&apos;t be undone.</source>
        <translation>Alle entfernten Verbindungen und ihre gespeicherten Passwörter werden gelöscht. Dies kann nicht rückgängig gemacht werden.</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Path Mapping</source>
        <translation>Pfadzuordnung</translation>
    </message>
</context>
<context>
    <name>ShareLimitField</name>
    <message>
        <source>No limit</source>
        <translation>Keine Begrenzung</translation>
    </message>
    <message>
        <source>Limit to</source>
        <translation>Begrenzen auf</translation>
    </message>
    <message>
        <source> min</source>
        <translation> min</translation>
    </message>
</context>
<context>
    <name>SidebarItem</name>
    <message>
        <source>All</source>
        <comment>State, category, tag or tracker title</comment>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Uncategorized</source>
        <comment>Category title</comment>
        <translation>Ohne Kategorie</translation>
    </message>
    <message>
        <source>Untagged</source>
        <comment>Tag title</comment>
        <translation>Ohne Tag</translation>
    </message>
    <message>
        <source>Trackerless</source>
        <comment>Tracker title</comment>
        <translation>Ohne Tracker</translation>
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
    <message>
        <source>User statistics</source>
        <translation>Benutzerstatistik</translation>
    </message>
    <message>
        <source>All-time upload</source>
        <translation>Upload insgesamt</translation>
    </message>
    <message>
        <source>All-time download</source>
        <translation>Download insgesamt</translation>
    </message>
    <message>
        <source>All-time share ratio</source>
        <translation>Verhältnis insgesamt</translation>
    </message>
    <message>
        <source>Session waste</source>
        <translation>Verworfene Daten der Sitzung</translation>
    </message>
    <message>
        <source>Connected peers</source>
        <translation>Verbundene Peers</translation>
    </message>
    <message>
        <source>Cache statistics</source>
        <translation>Cache-Statistik</translation>
    </message>
    <message>
        <source>Read cache hits</source>
        <translation>Lese-Cache-Treffer</translation>
    </message>
    <message>
        <source>Total buffer size</source>
        <translation>Gesamtgröße der Puffer</translation>
    </message>
    <message>
        <source>Performance statistics</source>
        <translation>Leistungsstatistik</translation>
    </message>
    <message>
        <source>Write cache overload</source>
        <translation>Schreib-Cache-Überlastung</translation>
    </message>
    <message>
        <source>Read cache overload</source>
        <translation>Lese-Cache-Überlastung</translation>
    </message>
    <message>
        <source>Queued I/O jobs</source>
        <translation>Wartende E/A-Aufträge</translation>
    </message>
    <message>
        <source>Average time in queue</source>
        <translation>Durchschnittliche Zeit in der Warteschlange</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>Total queued size</source>
        <translation>Gesamtgröße in der Warteschlange</translation>
    </message>
</context>
<context>
    <name>Sync</name>
    <message>
        <source>Failed to get main data.</source>
        <translation>Die Hauptdaten konnten nicht abgefragt werden.</translation>
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
    <message>
        <source>Server Log</source>
        <translation>Server-Protokoll</translation>
    </message>
    <message>
        <source>Search...</source>
        <translation>Suchen...</translation>
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
    <name>TntAddingOptions</name>
    <message>
        <source>The ratio limit is not a number.</source>
        <translation>Die Verhältnisbegrenzung ist keine Zahl.</translation>
    </message>
</context>
<context>
    <name>TntAddition</name>
    <message>
        <source>Failed to add torrents.</source>
        <translation>Torrents konnten nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to set file priority.</source>
        <translation>Dateipriorität konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>The torrent did not appear on the server, so its skipped files could not be set.</source>
        <translation>Der Torrent ist auf dem Server nicht erschienen, daher konnten seine übersprungenen Dateien nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>The server accepted the magnet link but does not list it.</source>
        <translation>Der Server hat den Magnet-Link angenommen, führt ihn aber nicht auf.</translation>
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
    <message>
        <source>A name cannot be empty.</source>
        <translation>Ein Name darf nicht leer sein.</translation>
    </message>
    <message>
        <source>A name cannot contain &quot;/&quot;.</source>
        <translation>Ein Name darf kein „/“ enthalten.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is already there.</source>
        <translation>„%1“ gibt es schon.</translation>
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
    <name>TntDetailEdits</name>
    <message>
        <source>Failed to rename folder.</source>
        <translation>Ordner konnte nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>Failed to rename file.</source>
        <translation>Datei konnte nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>Failed to add web seeds.</source>
        <translation>Webseeds konnten nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to edit web seed.</source>
        <translation>Webseed konnte nicht bearbeitet werden.</translation>
    </message>
    <message>
        <source>Failed to remove web seeds.</source>
        <translation>Webseeds konnten nicht entfernt werden.</translation>
    </message>
</context>
<context>
    <name>TntDetailLoader</name>
    <message>
        <source>Failed to get torrent properties.</source>
        <translation>Torrent-Eigenschaften konnten nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get torrent pieces state.</source>
        <translation>Stückstatus des Torrents konnte nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get torrent peers.</source>
        <translation>Torrent-Peers konnten nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get torrent content.</source>
        <translation>Torrent-Inhalt konnte nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get torrent trackers.</source>
        <translation>Torrent-Tracker konnten nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get torrent web seeds.</source>
        <translation>Webseeds des Torrents konnten nicht abgefragt werden.</translation>
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
    <name>TntExport</name>
    <message>
        <source>Export .torrent</source>
        <translation>.torrent exportieren</translation>
    </message>
    <message>
        <source>Torrent files (*.torrent)</source>
        <translation>Torrent-Dateien (*.torrent)</translation>
    </message>
    <message>
        <source>Export %1 .torrent Files to Folder</source>
        <translation>%1 .torrent-Dateien in einen Ordner exportieren</translation>
    </message>
    <message>
        <source>Failed to export torrent.</source>
        <translation>Torrent konnte nicht exportiert werden.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be written.</source>
        <translation>„%1“ konnte nicht geschrieben werden.</translation>
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
    <name>TntLabelOperations</name>
    <message>
        <source>Failed to set torrent category.</source>
        <translation>Torrent-Kategorie konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to create category.</source>
        <translation>Kategorie konnte nicht erstellt werden.</translation>
    </message>
    <message>
        <source>Failed to edit category.</source>
        <translation>Kategorie konnte nicht bearbeitet werden.</translation>
    </message>
    <message>
        <source>Failed to remove categories.</source>
        <translation>Kategorien konnten nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Failed to add tags.</source>
        <translation>Tags konnten nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to remove tags.</source>
        <translation>Tags konnten nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Failed to create tags.</source>
        <translation>Tags konnten nicht erstellt werden.</translation>
    </message>
    <message>
        <source>Failed to delete tags.</source>
        <translation>Tags konnten nicht gelöscht werden.</translation>
    </message>
</context>
<context>
    <name>TntMetadata</name>
    <message>
        <source>n/a</source>
        <comment>not available</comment>
        <translation>k. A.</translation>
    </message>
    <message>
        <source>The file&apos;s format is invalid.</source>
        <translation>Das Format der Datei ist ungültig.</translation>
    </message>
    <message>
        <source>The torrent has no name.</source>
        <translation>Der Torrent hat keinen Namen.</translation>
    </message>
    <message>
        <source>The torrent has no valid piece length.</source>
        <translation>Der Torrent hat keine gültige Stückgröße.</translation>
    </message>
    <message>
        <source>The torrent has no valid pieces.</source>
        <translation>Der Torrent hat keine gültigen Stücke.</translation>
    </message>
    <message>
        <source>The torrent has no files.</source>
        <translation>Der Torrent enthält keine Dateien.</translation>
    </message>
    <message>
        <source>The torrent&apos;s size is zero.</source>
        <translation>Die Größe des Torrents ist null.</translation>
    </message>
    <message>
        <source>The torrent has a file of negative size.</source>
        <translation>Der Torrent enthält eine Datei mit negativer Größe.</translation>
    </message>
    <message>
        <source>The file holds no torrent information.</source>
        <translation>Die Datei enthält keine Torrent-Informationen.</translation>
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
    <message>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
    <message>
        <source>Not contacted yet</source>
        <translation>Noch nicht kontaktiert</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>Funktioniert</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Aktualisiere</translation>
    </message>
    <message>
        <source>Not working</source>
        <translation>Funktioniert nicht</translation>
    </message>
</context>
<context>
    <name>TntOperations</name>
    <message>
        <source>Failed to start torrents.</source>
        <translation>Torrents konnten nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Failed to stop torrents.</source>
        <translation>Torrents konnten nicht angehalten werden.</translation>
    </message>
    <message>
        <source>Failed to set force start for torrents.</source>
        <translation>Erzwungener Start konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to recheck torrents.</source>
        <translation>Torrents konnten nicht erneut geprüft werden.</translation>
    </message>
    <message>
        <source>Failed to reannounce torrents.</source>
        <translation>Torrents konnten nicht erneut angekündigt werden.</translation>
    </message>
    <message>
        <source>Failed to delete torrents.</source>
        <translation>Torrents konnten nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>Failed to increase torrent priority.</source>
        <translation>Torrent-Priorität konnte nicht erhöht werden.</translation>
    </message>
    <message>
        <source>Failed to decrease torrent priority.</source>
        <translation>Torrent-Priorität konnte nicht gesenkt werden.</translation>
    </message>
    <message>
        <source>Failed to set maximum torrent priority.</source>
        <translation>Höchste Torrent-Priorität konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to set minimum torrent priority.</source>
        <translation>Niedrigste Torrent-Priorität konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to set torrent location.</source>
        <translation>Torrent-Speicherort konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to rename torrent.</source>
        <translation>Torrent konnte nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>Failed to set file priority.</source>
        <translation>Dateipriorität konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to add trackers.</source>
        <translation>Tracker konnten nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to edit tracker.</source>
        <translation>Tracker konnte nicht bearbeitet werden.</translation>
    </message>
    <message>
        <source>Failed to remove trackers.</source>
        <translation>Tracker konnten nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Failed to add peers to torrent.</source>
        <translation>Peers konnten dem Torrent nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Failed to ban peers.</source>
        <translation>Peers konnten nicht gesperrt werden.</translation>
    </message>
    <message>
        <source>Failed to set automatic torrent management.</source>
        <translation>Automatische Torrent-Verwaltung konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to toggle sequential download.</source>
        <translation>Sequenzieller Download konnte nicht umgeschaltet werden.</translation>
    </message>
    <message>
        <source>Failed to toggle first/last piece priority.</source>
        <translation>Priorität für erstes/letztes Stück konnte nicht umgeschaltet werden.</translation>
    </message>
    <message>
        <source>Failed to set super seeding.</source>
        <translation>Superseeding konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to toggle speed limits mode.</source>
        <translation>Modus der Geschwindigkeitsbegrenzung konnte nicht umgeschaltet werden.</translation>
    </message>
    <message>
        <source>Failed to export torrent.</source>
        <translation>Torrent konnte nicht exportiert werden.</translation>
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
    <name>TntSpeedPage</name>
    <message>
        <source>Collecting rates…</source>
        <translation>Raten werden gesammelt…</translation>
    </message>
    <message>
        <source>This torrent</source>
        <translation>Dieser Torrent</translation>
    </message>
    <message>
        <source>All torrents</source>
        <translation>Alle Torrents</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Upload</translation>
    </message>
    <message>
        <source>Alternative speed limits on</source>
        <translation>Alternative Geschwindigkeitsbegrenzungen an</translation>
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
    <message>
        <source>%1d %2h</source>
        <translation>%1 T. %2 Std.</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1 Min.</translation>
    </message>
    <message>
        <source>%1s</source>
        <translation>%1 Sek.</translation>
    </message>
</context>
<context>
    <name>TntTableView</name>
    <message>
        <source>Filter by name</source>
        <translation>Nach Namen filtern</translation>
    </message>
    <message>
        <source>Torrents</source>
        <translation>Torrents</translation>
    </message>
</context>
<context>
    <name>TransferLimits</name>
    <message>
        <source>Failed to get download limit.</source>
        <translation>Download-Begrenzung konnte nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to get upload limit.</source>
        <translation>Upload-Begrenzung konnte nicht abgefragt werden.</translation>
    </message>
    <message>
        <source>Failed to set download limit.</source>
        <translation>Download-Begrenzung konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Failed to set upload limit.</source>
        <translation>Upload-Begrenzung konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>not a map of limits</source>
        <translation>keine Zuordnung von Begrenzungen</translation>
    </message>
    <message>
        <source>Failed to set share limits.</source>
        <translation>Teilen-Begrenzungen konnten nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>not a number</source>
        <translation>keine Zahl</translation>
    </message>
    <message>
        <source>Failed to shut down the server.</source>
        <translation>Der Server konnte nicht beendet werden.</translation>
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
    <message>
        <source>The server answered the last update in %1 ms (recently %2 ms).</source>
        <translation>Der Server hat die letzte Aktualisierung in %1 ms beantwortet (zuletzt im Mittel %2 ms).</translation>
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
    <name>UpdateCheck</name>
    <message>
        <source>Could not check for updates: %1</source>
        <translation>Die Suche nach Aktualisierungen ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Quillo is closing.</source>
        <translation>Quillo wird beendet.</translation>
    </message>
    <message>
        <source>the release feed at %1 did not answer (%2).</source>
        <translation>der Veröffentlichungs-Feed unter %1 hat nicht geantwortet (%2).</translation>
    </message>
    <message>
        <source>the release feed is not valid JSON (%1).</source>
        <translation>der Veröffentlichungs-Feed ist kein gültiges JSON (%1).</translation>
    </message>
    <message>
        <source>the release feed is not a list of releases.</source>
        <translation>der Veröffentlichungs-Feed ist keine Liste von Veröffentlichungen.</translation>
    </message>
    <message>
        <source>the release feed lists no release.</source>
        <translation>der Veröffentlichungs-Feed enthält keine Veröffentlichung.</translation>
    </message>
    <message>
        <source>Quillo is up to date.</source>
        <translation>Quillo ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>Quillo %1 is available.</source>
        <translation>Quillo %1 ist verfügbar.</translation>
    </message>
</context>
<context>
    <name>UpdatePresenter</name>
    <message>
        <source>Check for Updates</source>
        <translation>Nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>Open Release Page</source>
        <translation>Veröffentlichungsseite öffnen</translation>
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
