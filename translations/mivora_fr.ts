<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AccountsHint</name>
    <message>
        <source>Internet Accounts</source>
        <translation>Comptes en ligne</translation>
    </message>
    <message>
        <source>Using Google or Outlook? Add the account in %1 and its calendars show up here.</source>
        <translation>Vous utilisez Google ou Outlook&#x202f;? Ajoutez le compte dans %1 et ses agendas apparaîtront ici.</translation>
    </message>
</context>
<context>
    <name>Agenda</name>
    <message>
        <source>No more meetings today</source>
        <translation>Plus aucune réunion aujourd’hui</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Demain</translation>
    </message>
    <message>
        <source>Next: %1</source>
        <translation>À venir&#xa0;: %1</translation>
    </message>
    <message>
        <source>Join: %1</source>
        <translation>Rejoindre&#xa0;: %1</translation>
    </message>
    <message>
        <source>left out: its title</source>
        <translation>ignorée&#xa0;: son titre</translation>
    </message>
    <message>
        <source>left out: not accepted</source>
        <translation>ignorée&#xa0;: non acceptée</translation>
    </message>
    <message>
        <source>left out: nobody else</source>
        <translation>ignorée&#xa0;: personne d’autre</translation>
    </message>
</context>
<context>
    <name>AlertView</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>Join the next meeting</source>
        <translation>Rejoindre la prochaine réunion</translation>
    </message>
    <message>
        <source>Mivora does not answer; if that goes on, end it with `pkill -x mivora` and start it again</source>
        <translation>Mivora ne répond pas&#x202f;; si cela persiste, arrêtez-le avec `pkill -x mivora`, puis relancez-le</translation>
    </message>
</context>
<context>
    <name>BrowserSection</name>
    <message>
        <source>Open in the browser instead of the app</source>
        <translation>Ouvrir dans le navigateur plutôt que dans l’application</translation>
    </message>
    <message>
        <source>By default Join opens the Zoom or Teams app when it&apos;s installed, so there&apos;s no browser interstitial.</source>
        <translation>Par défaut, «&#x202f;Rejoindre&#x202f;» ouvre l’application Zoom ou Teams si elle est installée, sans passer par une page du navigateur.</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Microsoft Teams</source>
        <translation>Microsoft Teams</translation>
    </message>
</context>
<context>
    <name>CalendarList</name>
    <message>
        <source>Google or Outlook calendar missing? Add the account under System Settings → Internet Accounts and it appears here.</source>
        <translation>Un agenda Google ou Outlook manque&#x202f;? Ajoutez le compte dans Comptes en ligne et il apparaîtra ici.</translation>
    </message>
    <message>
        <source>Subscribe to a calendar…</source>
        <translation>S’abonner à un agenda…</translation>
    </message>
    <message>
        <source>Google or Outlook calendar missing? Subscribe to its private address and it appears here.</source>
        <translation>Un agenda Google ou Outlook manque&#x202f;? Abonnez-vous à son adresse privée et il apparaîtra ici.</translation>
    </message>
</context>
<context>
    <name>CalendarRow</name>
    <message>
        <source>Edit…</source>
        <translation>Modifier…</translation>
    </message>
</context>
<context>
    <name>CalendarStep</name>
    <message>
        <source>Let Mivora read your calendar</source>
        <translation>Laissez Mivora lire votre agenda</translation>
    </message>
    <message>
        <source>Mivora needs Full Access to see your meetings and their Join links. It reads them on this Mac and never stores or uploads anything.</source>
        <translation>Mivora doit voir vos réunions et leurs liens. Tout est lu sur cet ordinateur&#x202f;; rien n’est enregistré ni envoyé.</translation>
    </message>
    <message>
        <source>Allow Calendar Access</source>
        <translation>Autoriser l’accès à l’agenda</translation>
    </message>
    <message>
        <source>Access granted</source>
        <translation>Accès autorisé</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>Ouvrir les paramètres</translation>
    </message>
    <message>
        <source>Turn on Mivora under Privacy &amp; Security → Calendars, then come back here.</source>
        <translation>Mivora n’a pu lire aucun agenda. Ajoutez-en un, puis revenez ici.</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars: this system does not allow it.</source>
        <translation>Mivora ne peut pas lire vos agendas&#xa0;: ce système ne l’autorise pas.</translation>
    </message>
    <message>
        <source>Using Google or Outlook? Subscribe to the calendar&apos;s private address in Settings.</source>
        <translation>Vous utilisez Google ou Outlook&#x202f;? Abonnez-vous à l’adresse privée de l’agenda dans les paramètres.</translation>
    </message>
    <message>
        <source>No calendar found</source>
        <translation>Aucun agenda trouvé</translation>
    </message>
    <message>
        <source>Mivora may read your calendars, but there is none yet. These are the ways to one:</source>
        <translation>Mivora peut lire vos agendas, mais il n’y en a pas encore. Voici comment en avoir un&#xa0;:</translation>
    </message>
</context>
<context>
    <name>CalendarsPage</name>
    <message>
        <source>Calendar access</source>
        <translation>Accès aux agendas</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars until you allow it under Privacy &amp; Security → Calendars.</source>
        <translation>Mivora ne peut pas lire vos agendas tant que vous ne l’y autorisez pas.</translation>
    </message>
    <message>
        <source>Open System Settings…</source>
        <translation>Ouvrir les paramètres…</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars until you allow it.</source>
        <translation>Mivora ne peut pas lire vos agendas tant que vous ne l’autorisez pas.</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars: this system does not allow it.</source>
        <translation>Mivora ne peut pas lire vos agendas&#xa0;: ce système ne l’autorise pas.</translation>
    </message>
    <message>
        <source>Allow Calendar Access</source>
        <translation>Autoriser l’accès à l’agenda</translation>
    </message>
    <message>
        <source>No calendar found</source>
        <translation>Aucun agenda trouvé</translation>
    </message>
    <message>
        <source>Mivora may read your calendars, but there is none yet. These are the ways to one:</source>
        <translation>Mivora peut lire vos agendas, mais il n’y en a pas encore. Voici comment en avoir un&#xa0;:</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Print today&apos;s meetings, the next one and its countdown</source>
        <translation>Afficher les réunions du jour, la prochaine et le temps restant</translation>
    </message>
    <message>
        <source>Print one JSON object (with --follow, one a line)</source>
        <translation>Afficher un objet JSON (avec --follow, un par ligne)</translation>
    </message>
    <message>
        <source>Go on and print a line whenever something changes</source>
        <translation>Continuer et afficher une ligne à chaque changement</translation>
    </message>
    <message>
        <source>expected an RFC 3339 time such as %1, got &quot;%2&quot;</source>
        <translation>une heure RFC&#xa0;3339 telle que %1 est attendue, et non «&#x202f;%2&#x202f;»</translation>
    </message>
    <message>
        <source>Show the agenda of this time (RFC 3339)</source>
        <translation>Afficher l’agenda à cette heure (RFC&#xa0;3339)</translation>
    </message>
    <message>
        <source>Read this folder of iCalendar files instead of your own</source>
        <translation>Lire ce dossier de fichiers iCalendar à la place de vos agendas</translation>
    </message>
    <message>
        <source>Print the join link of an event&apos;s texts</source>
        <translation>Afficher le lien de réunion trouvé dans les textes d’un évènement</translation>
    </message>
    <message>
        <source>Print a JSON object, or null</source>
        <translation>Afficher un objet JSON, ou null</translation>
    </message>
    <message>
        <source>The event&apos;s URL</source>
        <translation>L’URL de l’évènement</translation>
    </message>
    <message>
        <source>The event&apos;s location</source>
        <translation>Le lieu de l’évènement</translation>
    </message>
    <message>
        <source>The event&apos;s notes</source>
        <translation>Les notes de l’évènement</translation>
    </message>
    <message>
        <source>Join the meeting of the panel, or else the next one with a link</source>
        <translation>Rejoindre la réunion du panneau, sinon la prochaine qui a un lien</translation>
    </message>
    <message>
        <source>Hide the panel for a minute</source>
        <translation>Masquer le panneau pendant une minute</translation>
    </message>
    <message>
        <source>Hide the panel of this meeting</source>
        <translation>Masquer le panneau de cette réunion</translation>
    </message>
    <message>
        <source>Copy the join link of the meeting that would be joined</source>
        <translation>Copier le lien de la réunion qui serait rejointe</translation>
    </message>
    <message>
        <source>Open the settings</source>
        <translation>Ouvrir les paramètres</translation>
    </message>
    <message>
        <source>The page to open</source>
        <translation>La page à ouvrir</translation>
    </message>
    <message>
        <source>End the running program</source>
        <translation>Quitter le programme en cours</translation>
    </message>
    <message>
        <source>Read and write the settings store; lists are JSON arrays</source>
        <translation>Lire et écrire les paramètres enregistrés&#x202f;; les listes sont des tableaux JSON</translation>
    </message>
    <message>
        <source>The setting&apos;s key</source>
        <translation>La clé du paramètre</translation>
    </message>
    <message>
        <source>Print all settings</source>
        <translation>Afficher tous les paramètres</translation>
    </message>
    <message>
        <source>Print one setting</source>
        <translation>Afficher un paramètre</translation>
    </message>
    <message>
        <source>Set one setting</source>
        <translation>Définir un paramètre</translation>
    </message>
    <message>
        <source>The new value</source>
        <translation>La nouvelle valeur</translation>
    </message>
    <message>
        <source>Remove one setting, so that its default holds</source>
        <translation>Supprimer un paramètre pour revenir à sa valeur par défaut</translation>
    </message>
    <message>
        <source>Show, give or take back the permission to read your calendars</source>
        <translation>Afficher, donner ou retirer l’autorisation de lire vos agendas</translation>
    </message>
    <message>
        <source>Print granted, denied or notDetermined</source>
        <translation>Afficher granted, denied ou notDetermined</translation>
    </message>
    <message>
        <source>Let Mivora read your calendars</source>
        <translation>Laisser Mivora lire vos agendas</translation>
    </message>
    <message>
        <source>Forget the permission</source>
        <translation>Oublier l’autorisation</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options&#xa0;</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Utilisation&#xa0;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not expected; expected %2</source>
        <translation>«&#x202f;%1&#x202f;» n’était pas attendu&#x202f;; attendu&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1: expected one of %2</source>
        <translation>%1&#xa0;: l’un de ces mots est attendu&#xa0;: %2</translation>
    </message>
    <message>
        <source>Print the version and end</source>
        <translation>Afficher la version et quitter</translation>
    </message>
    <message>
        <source>Print this help and end</source>
        <translation>Afficher cette aide et quitter</translation>
    </message>
    <message>
        <source>Start for the session bus, which asks for what it wants then</source>
        <translation>Démarrer pour le bus de session, qui demande ensuite ce qu’il veut</translation>
    </message>
    <message>
        <source>Start with the session, as a service of systemd where that runs it</source>
        <translation>Démarrer avec la session, comme service de systemd là où il la gère</translation>
    </message>
    <message>
        <source>%1 (mivora --help lists the arguments)</source>
        <translation>%1 (mivora --help énumère les arguments)</translation>
    </message>
    <message>
        <source>%1 can&apos;t be written; check the folder&apos;s permissions</source>
        <translation>impossible d’écrire %1&#x202f;; vérifiez les droits du dossier</translation>
    </message>
    <message>
        <source>--calendars: there is no folder &quot;%1&quot;; name one that holds iCalendar files</source>
        <translation>--calendars&#xa0;: le dossier «&#x202f;%1&#x202f;» n’existe pas&#x202f;; indiquez-en un qui contient des fichiers iCalendar</translation>
    </message>
    <message>
        <source>--calendars: &quot;%1&quot; is no folder; name the folder that holds it</source>
        <translation>--calendars&#xa0;: «&#x202f;%1&#x202f;» n’est pas un dossier&#x202f;; indiquez le dossier qui le contient</translation>
    </message>
    <message>
        <source>--calendars: &quot;%1&quot; can&apos;t be read; check its permissions</source>
        <translation>--calendars&#xa0;: impossible de lire «&#x202f;%1&#x202f;»&#x202f;; vérifiez ses droits</translation>
    </message>
    <message>
        <source>no access to your calendars yet; `mivora access allow` gives it</source>
        <translation>pas encore d’accès à vos agendas&#x202f;; `mivora access allow` l’accorde</translation>
    </message>
    <message>
        <source>no calendars can be read; add one to the desktop&apos;s calendar, put a folder of iCalendar files at ~/.calendars, or name one with --calendars DIR or $MIVORA_CALENDARS</source>
        <translation>aucun agenda ne peut être lu&#x202f;; ajoutez-en un à l’agenda du bureau, placez un dossier de fichiers iCalendar dans ~/.calendars, ou indiquez-en un avec --calendars DIR ou $MIVORA_CALENDARS</translation>
    </message>
    <message>
        <source>the calendars took too long to load; what is shown is not all</source>
        <translation>le chargement des agendas a pris trop de temps&#x202f;; l’affichage est incomplet</translation>
    </message>
    <message>
        <source>KEY: expected one of %1, got &quot;%2&quot;</source>
        <translation>KEY&#xa0;: l’un de ces mots est attendu&#xa0;: %1, et non «&#x202f;%2&#x202f;»</translation>
    </message>
    <message>
        <source>%1 is not set</source>
        <translation>%1 n’est pas défini</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true ou false</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>un nombre entier</translation>
    </message>
    <message>
        <source>a JSON array of strings</source>
        <translation>un tableau JSON de chaînes</translation>
    </message>
    <message>
        <source>VALUE of %1: expected %2, got &quot;%3&quot;</source>
        <translation>VALUE de %1&#xa0;: %2 est attendu, et non «&#x202f;%3&#x202f;»</translation>
    </message>
    <message>
        <source>no join link found: none of the texts holds an https link</source>
        <translation>aucun lien de réunion trouvé&#xa0;: aucun des textes ne contient de lien https</translation>
    </message>
    <message>
        <source>Mivora is not running; start it with `mivora`</source>
        <translation>Mivora n’est pas lancé&#x202f;; lancez-le avec `mivora`</translation>
    </message>
    <message>
        <source>Mivora runs already but does not answer; end it with `pkill -x mivora` and start it again</source>
        <translation>Mivora est déjà lancé mais ne répond pas&#x202f;; arrêtez-le avec `pkill -x mivora`, puis relancez-le</translation>
    </message>
    <message>
        <source>there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set</source>
        <translation>aucun écran&#xa0;: ni DISPLAY ni WAYLAND_DISPLAY n’est défini</translation>
    </message>
    <message>
        <source>Shows a countdown to your next meeting and joins it.
Without a command: start, or open the settings of the one that runs.

Calendars are read from your desktop&apos;s accounts and from folders of iCalendar files:
$MIVORA_CALENDARS (separated by colons), or ~/.calendars and ~/.local/share/calendars.</source>
        <translation>Affiche le temps restant avant votre prochaine réunion et la rejoint.
Sans commande&#xa0;: démarrer, ou ouvrir les paramètres du programme en cours.

Les agendas sont lus depuis les comptes de votre bureau et des dossiers de fichiers iCalendar&#xa0;:
$MIVORA_CALENDARS (séparés par des deux-points), sinon ~/.calendars et ~/.local/share/calendars.</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPTIONS</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>COMMANDE</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>Commandes&#xa0;</translation>
    </message>
    <message>
        <source>there is no session bus to reach Mivora on; run this in your desktop session</source>
        <translation>aucun bus de session pour joindre Mivora&#x202f;; lancez ceci dans votre session de bureau</translation>
    </message>
    <message>
        <source>the display can&apos;t be used: %1</source>
        <translation>l’écran n’est pas accessible&#xa0;: %1</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>l’une des valeurs %1</translation>
    </message>
    <message>
        <source>%1 knows only %2; &quot;%3&quot; is kept, but read as %4</source>
        <translation>%1 ne connaît que %2&#x202f;; «&#x202f;%3&#x202f;» est conservé mais lu comme %4</translation>
    </message>
    <message>
        <source>Show today&apos;s meetings in a small window</source>
        <translation>Afficher les réunions du jour dans une petite fenêtre</translation>
    </message>
    <message>
        <source>Subscribe to calendars by their addresses, and list these calendars</source>
        <translation>S’abonner à des agendas par leurs adresses, et lister ces agendas</translation>
    </message>
    <message>
        <source>The calendar&apos;s ID, as listed</source>
        <translation>L’identifiant de l’agenda, tel que dans la liste</translation>
    </message>
    <message>
        <source>The calendar&apos;s name</source>
        <translation>Le nom de l’agenda</translation>
    </message>
    <message>
        <source>Fetch the subscribed calendars now and print them</source>
        <translation>Récupérer maintenant les agendas abonnés et les afficher</translation>
    </message>
    <message>
        <source>Subscribe to a calendar</source>
        <translation>S’abonner à un agenda</translation>
    </message>
    <message>
        <source>An https: or webcal: address; read from standard input when it isn&apos;t given</source>
        <translation>Une adresse https ou webcal&#x202f;; lue sur l’entrée standard si elle n’est pas donnée</translation>
    </message>
    <message>
        <source>Remove a subscribed calendar</source>
        <translation>Supprimer un agenda abonné</translation>
    </message>
    <message>
        <source>Rename a subscribed calendar</source>
        <translation>Renommer un agenda abonné</translation>
    </message>
    <message>
        <source>Hide titles in the tray and on the panel, or show them again</source>
        <translation>Masquer les titres dans la zone de notification et sur le panneau, ou les afficher de nouveau</translation>
    </message>
    <message>
        <source>Show what the settings leave out too, with the reason</source>
        <translation>Afficher aussi ce que les paramètres ignorent, avec la raison</translation>
    </message>
    <message>
        <source>What becomes of them</source>
        <translation>Ce qu’il doit en advenir</translation>
    </message>
    <message>
        <source>Print a line whenever a meeting is due, joined, started or ended</source>
        <translation>Afficher une ligne quand une réunion est imminente, rejointe, commencée ou terminée</translation>
    </message>
    <message>
        <source>Print one JSON object a line</source>
        <translation>Afficher un objet JSON par ligne</translation>
    </message>
</context>
<context>
    <name>CommandLineTexts</name>
    <message>
        <source>Address of the calendar:</source>
        <translation>Adresse de l’agenda&#xa0;:</translation>
    </message>
</context>
<context>
    <name>Countdown</name>
    <message>
        <source>now</source>
        <translation>maintenant</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1&#xa0;h</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1&#xa0;h %2&#xa0;min</translation>
    </message>
    <message>
        <source>now</source>
        <comment>in a small icon</comment>
        <translation>0m</translation>
    </message>
    <message>
        <source>%1m</source>
        <comment>in a small icon</comment>
        <translation>%1m</translation>
    </message>
    <message>
        <source>%1h</source>
        <comment>in a small icon</comment>
        <translation>%1h</translation>
    </message>
</context>
<context>
    <name>FirstMeetingStep</name>
    <message>
        <source>Here&apos;s your next meeting</source>
        <translation>Voici votre prochaine réunion</translation>
    </message>
    <message>
        <source>No meetings today</source>
        <translation>Aucune réunion aujourd’hui</translation>
    </message>
    <message>
        <source>You&apos;re all set. The countdown appears in the menu bar as soon as something is on your calendar.</source>
        <translation>Tout est prêt. Le compte à rebours apparaîtra dans la zone de notification dès que votre agenda contiendra une réunion.</translation>
    </message>
    <message>
        <source>The countdown is in your menu bar from now on.</source>
        <translation>Le compte à rebours est désormais dans la zone de notification.</translation>
    </message>
    <message>
        <source>A minute before it starts, the Join panel appears. Change the lead time in Settings.</source>
        <translation>Une minute avant le début, le panneau Rejoindre apparaît. Modifiez ce délai dans les paramètres.</translation>
    </message>
    <message>
        <source>A minute before each meeting, the Join panel appears. Change the lead time in Settings.</source>
        <translation>Une minute avant chaque réunion, le panneau Rejoindre apparaît. Modifiez ce délai dans les paramètres.</translation>
    </message>
</context>
<context>
    <name>GeneralPage</name>
    <message>
        <source>Menu bar</source>
        <translation>Zone de notification</translation>
    </message>
    <message>
        <source>Show the next meeting in the menu bar</source>
        <translation>Afficher la prochaine réunion dans la zone de notification</translation>
    </message>
    <message>
        <source>Off: only the icon, the menu still lists your meetings.</source>
        <translation>Désactivé&#xa0;: seulement l’icône&#x202f;; le menu affiche toujours vos réunions.</translation>
    </message>
    <message>
        <source>Title length</source>
        <translation>Longueur du titre</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Lancer à l’ouverture de session</translation>
    </message>
    <message>
        <source>Start Mivora quietly when you log in.</source>
        <translation>Démarre Mivora discrètement quand vous ouvrez votre session.</translation>
    </message>
    <message>
        <source>Before a meeting</source>
        <translation>Avant une réunion</translation>
    </message>
    <message>
        <source>Show the Join panel</source>
        <translation>Afficher le panneau Rejoindre</translation>
    </message>
    <message>
        <source>Panel position</source>
        <translation>Position du panneau</translation>
    </message>
    <message>
        <source>Also remind me for meetings without a link</source>
        <translation>Me rappeler aussi les réunions sans lien</translation>
    </message>
    <message>
        <source>In-person meetings and calls show the panel too, without a Join button.</source>
        <translation>Le panneau apparaît aussi pour les réunions en personne et les appels, sans le bouton Rejoindre.</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Raccourci clavier</translation>
    </message>
    <message>
        <source>Join the next meeting with a shortcut</source>
        <translation>Rejoindre la prochaine réunion avec un raccourci</translation>
    </message>
    <message>
        <source>Works from any app.</source>
        <translation>Fonctionne depuis toutes les applications.</translation>
    </message>
    <message>
        <source>When it starts</source>
        <translation>Au début</translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s) before</source>
        <translation>
            <numerusform>%n minute avant</numerusform>
            <numerusform>%n minutes avant</numerusform>
        </translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>En haut à droite</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>En haut à gauche</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>En bas à droite</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>En bas à gauche</translation>
    </message>
    <message numerus="yes">
        <source>%n character(s)</source>
        <translation>
            <numerusform>%n caractère</numerusform>
            <numerusform>%n caractères</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is already in use. Choose a different shortcut.</source>
        <translation>%1 est déjà utilisé. Choisissez un autre raccourci.</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copié</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Your desktop has set no keys for it. Choose them in its settings.</source>
        <translation>Votre bureau ne lui a attribué aucune touche. Choisissez-les dans ses paramètres.</translation>
    </message>
    <message>
        <source>Waiting for your desktop, which may be asking you.</source>
        <translation>En attente de votre bureau, qui vous pose peut-être la question.</translation>
    </message>
    <message>
        <source>You declined it. Switch it on to be asked again.</source>
        <translation>Vous l’avez refusé. Activez-le pour que la question soit reposée.</translation>
    </message>
    <message>
        <source>Your desktop refused it. Switch it off and on to try again.</source>
        <translation>Votre bureau l’a refusé. Désactivez-le puis réactivez-le pour réessayer.</translation>
    </message>
    <message>
        <source>Your desktop has ended it. Switch it off and on to try again.</source>
        <translation>Votre bureau y a mis fin. Désactivez-le puis réactivez-le pour réessayer.</translation>
    </message>
    <message>
        <source>Bind this command to a key in the settings of your desktop:</source>
        <translation>Associez cette commande à une touche dans les paramètres de votre bureau&#xa0;:</translation>
    </message>
    <message>
        <source>Add this line to %1:</source>
        <translation>Ajoutez cette ligne à %1&#xa0;:</translation>
    </message>
    <message>
        <source>Change the keys in the settings of your desktop.</source>
        <translation>Modifiez les touches dans les paramètres de votre bureau.</translation>
    </message>
    <message>
        <source>Change…</source>
        <translation>Modifier…</translation>
    </message>
    <message>
        <source>Hide titles during Do Not Disturb</source>
        <translation>Masquer les titres en mode «&#x202f;Ne pas déranger&#x202f;»</translation>
    </message>
    <message>
        <source>Where the desktop tells of it, as Plasma does; screen sharing included.</source>
        <translation>Si le bureau le signale, comme Plasma&#x202f;; partage d’écran compris.</translation>
    </message>
</context>
<context>
    <name>HotKeyRecorder</name>
    <message>
        <source>Press a shortcut…</source>
        <translation>Saisissez un raccourci…</translation>
    </message>
</context>
<context>
    <name>JoinPanel</name>
    <message>
        <source>Starts in %1</source>
        <translation>Commence dans %1</translation>
    </message>
    <message>
        <source>Started %1m ago</source>
        <translation>Commencée il y a %1&#xa0;min</translation>
    </message>
    <message>
        <source>Starting now</source>
        <translation>Commence maintenant</translation>
    </message>
</context>
<context>
    <name>JoinPanelView</name>
    <message>
        <source>Join</source>
        <translation>Rejoindre</translation>
    </message>
    <message>
        <source>Snooze 1 min</source>
        <translation>Rappel dans 1&#xa0;min</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ignorer</translation>
    </message>
</context>
<context>
    <name>KeyboardLayout</name>
    <message>
        <source>Space</source>
        <comment>the key</comment>
        <translation>Espace</translation>
    </message>
</context>
<context>
    <name>LeaveOutSection</name>
    <message>
        <source>Leave out</source>
        <translation>Ignorer</translation>
    </message>
    <message>
        <source>Invitations that you haven&apos;t accepted</source>
        <translation>Les invitations que vous n’avez pas acceptées</translation>
    </message>
    <message>
        <source>Those without your answer, and those that you answered with “maybe”.</source>
        <translation>Restées sans réponse ou acceptées provisoirement.</translation>
    </message>
    <message>
        <source>Events in which nobody else takes part</source>
        <translation>Les événements sans autre participant</translation>
    </message>
    <message>
        <source>Meetings with the title</source>
        <translation>Les réunions intitulées</translation>
    </message>
    <message>
        <source>* stands for any text, ? for one character.</source>
        <translation>«&#x202f;*&#x202f;» remplace n’importe quel texte, «&#x202f;?&#x202f;» un caractère.</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
</context>
<context>
    <name>Meeting</name>
    <message>
        <source>Meeting</source>
        <comment>in the place of a title that is hidden</comment>
        <translation>Réunion</translation>
    </message>
</context>
<context>
    <name>MenuBarMock</name>
    <message>
        <source>The countdown in the menu bar, and the Join panel under it</source>
        <translation>Le compte à rebours dans la zone de notification et, au-dessous, le panneau Rejoindre</translation>
    </message>
    <message>
        <source>Design review · 2m</source>
        <translation>Revue de conception · 2&#xa0;min</translation>
    </message>
    <message>
        <source>Design review</source>
        <translation>Revue de conception</translation>
    </message>
    <message>
        <source>Starts in 2m · Zoom</source>
        <translation>Commence dans 2&#xa0;min · Zoom</translation>
    </message>
    <message>
        <source>Join</source>
        <translation>Rejoindre</translation>
    </message>
    <message>
        <source>Snooze 1 min</source>
        <translation>Rappel dans 1&#xa0;min</translation>
    </message>
</context>
<context>
    <name>Onboarding</name>
    <message>
        <source>Welcome to Mivora</source>
        <translation>Bienvenue dans Mivora</translation>
    </message>
    <message>
        <source>Start Using Mivora</source>
        <translation>Commencer avec Mivora</translation>
    </message>
</context>
<context>
    <name>OnboardingView</name>
    <message>
        <source>Skip for now</source>
        <translation>Passer pour l’instant</translation>
    </message>
</context>
<context>
    <name>PageDots</name>
    <message>
        <source>Step %1 of %2</source>
        <translation>Étape %1 sur %2</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Ctrl</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Maj</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>Meta</source>
        <translation>Meta</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Entrée</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Retour arrière</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Échap</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Suppr</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Inser</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Début</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Fin</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Page préc.</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Page suiv.</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Gauche</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Droite</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Haut</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Bas</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Entrée (pavé)</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Verr. num.</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <translation>Volume +</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <translation>Volume -</translation>
    </message>
    <message>
        <source>Volume Mute</source>
        <translation>Muet</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Power Off</source>
        <translation>Éteindre</translation>
    </message>
    <message>
        <source>Num %1</source>
        <translation>Pavé %1</translation>
    </message>
</context>
<context>
    <name>Service</name>
    <message>
        <source>Link</source>
        <comment>a meeting&apos;s link to a service without a name</comment>
        <translation>Lien</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Calendars</source>
        <translation>Agendas</translation>
    </message>
</context>
<context>
    <name>SettingsSidebar</name>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Mivora needs Calendar access</source>
        <translation>Mivora a besoin d’accéder à l’agenda</translation>
    </message>
    <message>
        <source>GNOME shows no icon before you install the extension AppIndicator (gnome-shell-extension-appindicator) and turn it on in the app Extensions; until then, “mivora show” shows your day.</source>
        <translation>GNOME n’affiche aucune icône avant que vous n’installiez l’extension AppIndicator (gnome-shell-extension-appindicator) et ne l’activiez dans l’application Extensions&#x202f;; d’ici là, «&#x202f;mivora show&#x202f;» affiche votre journée.</translation>
    </message>
    <message>
        <source>This desktop has no tray for the icon: add one to a panel; until then, “mivora show” shows your day.</source>
        <translation>Ce bureau n’a pas de zone de notification pour l’icône&#xa0;: ajoutez-en une à un panneau&#x202f;; d’ici là, «&#x202f;mivora show&#x202f;» affiche votre journée.</translation>
    </message>
    <message>
        <source>Mivora found no calendar</source>
        <translation>Mivora n’a trouvé aucun agenda</translation>
    </message>
</context>
<context>
    <name>StatusMenu</name>
    <message>
        <source>now</source>
        <comment>of a meeting that is running</comment>
        <translation>en cours</translation>
    </message>
    <message>
        <source>No more meetings today</source>
        <translation>Plus aucune réunion aujourd’hui</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Demain</translation>
    </message>
    <message>
        <source>Allow Calendar access…</source>
        <translation>Autoriser l’accès à l’agenda…</translation>
    </message>
    <message>
        <source>Calendar access needed…</source>
        <translation>Accès à l’agenda requis…</translation>
    </message>
    <message>
        <source>No calendars selected — open Settings…</source>
        <translation>Aucun agenda sélectionné – ouvrir les paramètres…</translation>
    </message>
    <message>
        <source>Join Next Meeting</source>
        <translation>Rejoindre la prochaine réunion</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Paramètres…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Rechercher des mises à jour…</translation>
    </message>
    <message>
        <source>More Kelo apps…</source>
        <translation>Autres applications Kelo…</translation>
    </message>
    <message>
        <source>Quit Mivora</source>
        <translation>Quitter Mivora</translation>
    </message>
    <message>
        <source>No calendar found…</source>
        <translation>Aucun agenda trouvé…</translation>
    </message>
</context>
<context>
    <name>Subscription</name>
    <message>
        <source>This is not the address of a calendar. It begins with https:// or webcal://.</source>
        <translation>Ce n’est pas l’adresse d’un agenda. Elle commence par https:// ou webcal://.</translation>
    </message>
    <message>
        <source>Subscribing needs Evolution Data Server, the desktop&apos;s calendar store: install the package evolution-data-server. A folder of iCalendar files, ~/.calendars, does without.</source>
        <translation>Pour s’abonner, il faut Evolution Data Server, le stockage d’agendas du bureau&#xa0;: installez le paquet evolution-data-server. Un dossier de fichiers iCalendar, ~/.calendars, s’en passe.</translation>
    </message>
    <message>
        <source>The desktop&apos;s calendar store, Evolution Data Server, does not answer. Try again later.</source>
        <translation>Le stockage d’agendas du bureau, Evolution Data Server, ne répond pas. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>Mivora has not subscribed to this calendar, or no longer.</source>
        <translation>Mivora n’est pas abonné à cet agenda, ou ne l’est plus.</translation>
    </message>
    <message>
        <source>%1 has no calendar at this address.</source>
        <translation>%1 n’a pas d’agenda à cette adresse.</translation>
    </message>
    <message>
        <source>%1 asks for a password. A calendar&apos;s private address needs none.</source>
        <translation>%1 demande un mot de passe. L’adresse privée d’un agenda n’en demande pas.</translation>
    </message>
    <message>
        <source>What %1 has at this address is not a calendar, or a broken one. The address in iCalendar format is needed.</source>
        <translation>Ce que %1 fournit à cette adresse n’est pas un agenda, ou est endommagé. Il faut l’adresse au format iCalendar.</translation>
    </message>
    <message>
        <source>The certificate of %1 is not valid: somebody else may pretend to be it.</source>
        <translation>Le certificat de %1 n’est pas valide&#xa0;: quelqu’un d’autre peut se faire passer pour lui.</translation>
    </message>
    <message>
        <source>%1 can&apos;t be reached. Check the address and the network.</source>
        <translation>%1 est injoignable. Vérifiez l’adresse et le réseau.</translation>
    </message>
    <message>
        <source>%1 takes too long to answer. Try again later.</source>
        <translation>%1 met trop longtemps à répondre. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>%1 does not hand out the calendar now. Try again later.</source>
        <translation>%1 ne fournit pas l’agenda en ce moment. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>This is a large calendar, and is still being read.</source>
        <translation>C’est un grand agenda, dont la lecture continue.</translation>
    </message>
    <message>
        <source>No meetings this week</source>
        <translation>Aucune réunion cette semaine</translation>
    </message>
    <message numerus="yes">
        <source>%n meeting(s) this week</source>
        <translation>
            <numerusform>%n réunion cette semaine</numerusform>
            <numerusform>%n réunions cette semaine</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SubscriptionView</name>
    <message>
        <source>Address of the calendar</source>
        <translation>Adresse de l’agenda</translation>
    </message>
    <message>
        <source>Name of the calendar</source>
        <translation>Nom de l’agenda</translation>
    </message>
    <message>
        <source>The calendar is being fetched</source>
        <translation>L’agenda est en cours de récupération</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Subscribe</source>
        <translation>S’abonner</translation>
    </message>
</context>
<context>
    <name>Updates</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>No update feed configured</source>
        <translation>Aucune source de mises à jour configurée</translation>
    </message>
    <message>
        <source>This build of %1 has no update feed configured, so it can&apos;t look for new versions itself. Get them from where you got this one.</source>
        <translation>Cette version de %1 n’a pas de source de mises à jour et ne peut donc pas chercher elle-même de nouvelles versions. Obtenez-les là où vous avez trouvé celle-ci.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message>
        <source>You&apos;re up to date</source>
        <translation>Mivora est à jour</translation>
    </message>
    <message>
        <source>%1 %2 is the newest version.</source>
        <translation>%1 %2 est la version la plus récente.</translation>
    </message>
    <message>
        <source>A new version of %1 is available</source>
        <translation>Une nouvelle version de %1 est disponible</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>A part of %1 is missing. Install %1 again.</source>
        <translation>Il manque une partie de %1. Réinstallez %1.</translation>
    </message>
    <message>
        <source>This build of %1 has no valid key to verify updates with. Get new versions from where you got this one.</source>
        <translation>Cette version de %1 n’a pas de clé valide pour vérifier les mises à jour. Obtenez les nouvelles versions là où vous avez trouvé celle-ci.</translation>
    </message>
    <message>
        <source>The update server can&apos;t be reached. Check your internet connection, then try again.</source>
        <translation>Le serveur de mises à jour est injoignable. Vérifiez votre connexion Internet, puis réessayez.</translation>
    </message>
    <message>
        <source>The update server answered with an error. Try again later.</source>
        <translation>Le serveur de mises à jour a répondu par une erreur. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>The update server couldn&apos;t prove that it is genuine. Check the date of your computer, or try again on another network.</source>
        <translation>Le serveur de mises à jour n’a pas pu prouver son authenticité. Vérifiez la date de votre ordinateur ou réessayez sur un autre réseau.</translation>
    </message>
    <message>
        <source>The list of versions can&apos;t be read. Try again later.</source>
        <translation>La liste des versions est illisible. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>Couldn&apos;t check for updates</source>
        <translation>Échec de la recherche de mises à jour</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>%1 %2 was released on %3. You have %4.</source>
        <translation>%1 %2 est paru le %3. Vous avez %4.</translation>
    </message>
    <message>
        <source>Download…</source>
        <translation>Télécharger…</translation>
    </message>
    <message>
        <source>What the update server says is not signed by the makers of %1. Try again later; if it happens again, tell them.</source>
        <translation>Ce que dit le serveur de mises à jour n’est pas signé par les auteurs de %1. Réessayez plus tard&#x202f;; si cela se reproduit, prévenez-les.</translation>
    </message>
</context>
<context>
    <name>WelcomeStep</name>
    <message>
        <source>Your next meeting, one click away.</source>
        <translation>Votre prochaine réunion, à un clic.</translation>
    </message>
    <message>
        <source>The countdown lives in your menu bar. A minute before, a small panel offers Join, Snooze or Dismiss.</source>
        <translation>Le compte à rebours se trouve dans la zone de notification. Une minute avant, un petit panneau propose de rejoindre la réunion, de vous la rappeler plus tard ou de l’ignorer.</translation>
    </message>
</context>
<context>
    <name>kelo::HotKeyRecorder</name>
    <message>
        <source>Press Esc to cancel</source>
        <translation>Appuyez sur Échap pour annuler</translation>
    </message>
    <message>
        <source>Click to record a new shortcut</source>
        <translation>Cliquez pour enregistrer un nouveau raccourci</translation>
    </message>
    <message>
        <source>Reset to %1</source>
        <translation>Rétablir %1</translation>
    </message>
</context>
<context>
    <name>kelo::OnboardingModel</name>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
</context>
<context>
    <name>mivora::AppDelegate</name>
    <message>
        <source>there is no meeting to join now</source>
        <translation>il n’y a pas de réunion à rejoindre pour l’instant</translation>
    </message>
    <message>
        <source>your desktop&apos;s clipboard takes text only from the program with the keyboard; install wl-clipboard</source>
        <translation>le presse-papiers de ce bureau n’accepte que le texte du programme qui a le clavier&#x202f;; installez wl-clipboard</translation>
    </message>
    <message>
        <source>there is no meeting with a link now</source>
        <translation>il n’y a pas de réunion avec un lien pour l’instant</translation>
    </message>
    <message>
        <source>Mivora knows no action &quot;%1&quot;</source>
        <translation>Mivora ne connaît pas l’action «&#x202f;%1&#x202f;»</translation>
    </message>
    <message>
        <source>the settings have no page &quot;%1&quot;</source>
        <translation>les paramètres n’ont pas de page «&#x202f;%1&#x202f;»</translation>
    </message>
    <message>
        <source>the settings can&apos;t be shown</source>
        <translation>les paramètres ne peuvent pas être affichés</translation>
    </message>
    <message>
        <source>no meeting has its panel shown now</source>
        <translation>aucun panneau de réunion n’est affiché pour l’instant</translation>
    </message>
    <message>
        <source>Settings can&apos;t be saved: %1</source>
        <translation>Impossible d’enregistrer les paramètres&#xa0;: %1</translation>
    </message>
    <message>
        <source>your calendars are still being read; try again in a moment</source>
        <translation>vos agendas sont encore en cours de lecture&#x202f;; réessayez dans un instant</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>the day can&apos;t be shown</source>
        <translation>la journée ne peut pas être affichée</translation>
    </message>
    <message>
        <source>title: expected hide, show or toggle, got &quot;%1&quot;</source>
        <translation>title&#xa0;: hide, show ou toggle est attendu, et non «&#x202f;%1&#x202f;»</translation>
    </message>
    <message>
        <source>titles stay hidden while your desktop holds notifications back; `mivora defaults write hideTitleWhileInhibited false` shows them</source>
        <translation>les titres restent masqués tant que votre bureau retient les notifications&#x202f;; `mivora defaults write hideTitleWhileInhibited false` les affiche</translation>
    </message>
</context>
<context>
    <name>mivora::CalendarListModel</name>
    <message>
        <source>Calendars</source>
        <translation>Agendas</translation>
    </message>
</context>
<context>
    <name>mivora::CalendarWays</name>
    <message>
        <source>Online accounts</source>
        <translation>Comptes en ligne</translation>
    </message>
    <message>
        <source>The calendars of Google, Microsoft 365, Nextcloud and others appear here.</source>
        <translation>Les agendas de Google, Microsoft 365, Nextcloud et d’autres apparaissent ici.</translation>
    </message>
    <message>
        <source>Open Online Accounts…</source>
        <translation>Ouvrir Comptes en ligne…</translation>
    </message>
    <message>
        <source>Evolution</source>
        <translation>Evolution</translation>
    </message>
    <message>
        <source>It also knows Exchange, CalDAV, and calendars on this computer.</source>
        <translation>Connaît aussi Exchange, CalDAV et les agendas de cet ordinateur.</translation>
    </message>
    <message>
        <source>Open Evolution…</source>
        <translation>Ouvrir Evolution…</translation>
    </message>
    <message>
        <source>The calendar&apos;s address</source>
        <translation>L’adresse de l’agenda</translation>
    </message>
    <message>
        <source>Nearly every calendar service has a private address for each calendar.</source>
        <translation>Presque tous les services d’agendas ont une adresse privée pour chaque agenda.</translation>
    </message>
    <message>
        <source>Subscribe to a calendar…</source>
        <translation>S’abonner à un agenda…</translation>
    </message>
    <message>
        <source>A folder of files</source>
        <translation>Un dossier de fichiers</translation>
    </message>
    <message>
        <source>iCalendar files (.ics) in ~/.calendars are read at once, also those that another program keeps in step with a server.</source>
        <translation>Les fichiers iCalendar (.ics) de ~/.calendars sont lus aussitôt, même ceux qu’un autre programme synchronise avec un serveur.</translation>
    </message>
</context>
<context>
    <name>mivora::ConflictAlert</name>
    <message>
        <source>%1 is already in use</source>
        <translation>%1 est déjà utilisé</translation>
    </message>
    <message>
        <source>Another app uses this shortcut. Choose a different one in Settings.</source>
        <translation>Une autre application utilise ce raccourci. Choisissez-en un autre dans les paramètres.</translation>
    </message>
</context>
<context>
    <name>mivora::FirstMeetingModel</name>
    <message>
        <source>%1 · no link</source>
        <translation>%1 · sans lien</translation>
    </message>
</context>
<context>
    <name>mivora::JoinNotification</name>
    <message>
        <source>Join</source>
        <translation>Rejoindre</translation>
    </message>
    <message>
        <source>Snooze 1 min</source>
        <translation>Rappel dans 1&#xa0;min</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ignorer</translation>
    </message>
</context>
<context>
    <name>mivora::MeetingCommands</name>
    <message>
        <source>Couldn&apos;t open %1. Link copied.</source>
        <translation>Impossible d’ouvrir %1. Lien copié.</translation>
    </message>
</context>
<context>
    <name>mivora::PortalLoginItem</name>
    <message>
        <source>Mivora counts down to your next meeting from the moment you log in.</source>
        <translation>Mivora affiche le compte à rebours de votre prochaine réunion dès l’ouverture de session.</translation>
    </message>
</context>
<context>
    <name>mivora::SubscriptionDialog</name>
    <message>
        <source>From %1</source>
        <translation>De %1</translation>
    </message>
    <message>
        <source>Paste the private address of the calendar, in iCalendar format. Your calendar service shows it in the calendar&apos;s settings. Your desktop&apos;s calendar store keeps it, and fetches the calendar every 15 minutes.</source>
        <translation>Collez l’adresse privée de l’agenda, au format iCalendar. Votre service d’agendas la montre dans les paramètres de l’agenda. Le stockage d’agendas de votre bureau la garde et récupère l’agenda toutes les 15 minutes.</translation>
    </message>
    <message>
        <source>A link offers you a calendar of %1. Your desktop&apos;s calendar store would fetch it from there every 15 minutes.</source>
        <translation>Un lien vous propose un agenda de %1. Le stockage d’agendas de votre bureau l’y récupérerait toutes les 15 minutes.</translation>
    </message>
    <message>
        <source>Subscribe to a calendar</source>
        <translation>S’abonner à un agenda</translation>
    </message>
</context>
</TS>
