MEVHOSTCALLS ; The calls of the host itself: sign-on, keys, patients, visits
 ;
USERS ; Call: the users who may sign on; over TLS, only the one that the certificate names
 NEW count,ien,node,only
 SET count=0,ien=0,only=$$CERTIFIED
 FOR  SET ien=$ORDER(^MEVUSR(ien)) QUIT:'ien  SET node=^MEVUSR(ien,0) IF $PIECE(node,"^",4) DO
 . IF only'="",$PIECE(node,"^")'=only QUIT
 . SET count=count+1,reply(count)=ien_"^"_$PIECE(node,"^",1,2)
 QUIT
 ;
CERTIFIED() ; The user that the certificate names, from the script that started the session; empty on a local server
 QUIT $ZTRNLNM("mev_user")
 ;
SIGNON ; Call: session name ^ user name [^ the host's version of the protocol]
 ; A refusal leaves the session unchanged.
 NEW ien,name,new,version,why
 SET new=$PIECE(param,"^"),name=$PIECE(param,"^",2),version=$PIECE(param,"^",3)
 IF version="" SET version=1 ; the first version did not send it
 SET why=$$WHYNOT
 IF why'="" DO TURNAWAY(why) QUIT
 ; Repeated sign-on in one session may be a search for valid names.
 IF user,token'=new!(user'=ien) DO SLOW^MEVLIMITS($$COUNT^MEVLIMITS("SIGNON "_$$CERTIFIED))
 IF user'=ien KILL seen SET seen=0,seen("count")=0
 SET user=ien,person=name,token=new,speaks=version,^MEVSES(session,"USER")=ien,^MEVSES(session,"NAME")=new
 DO SIGNON^MEVAUDIT(1,""),SWEEP^MEVEVENTS,FORGET^MEVTRANSACTION
 SET reply=ien_"^"_name_"^1^"_$PIECE(^AUTTLOC(1,0),"^")_"^"_$$SPEAKS
 QUIT
 ;
SPEAKS() ; This server's version of the protocol
 QUIT 2
 ;
LOWEST() ; The oldest version of the protocol that a host may use
 QUIT 1
 ;
WHYNOT() ; The reason to refuse this sign-on, else empty; sets ien
 NEW none,old,other,several
 SET old="This host is too old for the server, which requires version "_$$LOWEST_" of the protocol. Update the host."
 SET none="The server has no users yet. Its administrator adds the first one with: "
 SET none=none_"phserver --data FOLDER --users add LAST,FIRST"
 SET several=". Its administrator must disable all but one (phserver --users)."
 IF new'?32(1N,1"a",1"b",1"c",1"d",1"e",1"f") QUIT "The session's name must be 32 hexadecimal digits."
 IF version'?1.4N QUIT "The version of the host's protocol must be a number."
 IF version<$$LOWEST QUIT old
 IF name="" QUIT "A user name is missing."
 SET other="Your certificate is for "_$$CERTIFIED_", not for "_$$BRIEF^MEVTEXT(name,80)_"."
 IF $$CERTIFIED'="",name'=$$CERTIFIED QUIT other
 IF '$PIECE(^MEVUSR(0),"^",4) QUIT none
 SET ien=$$NAMED(name)
 IF 'ien QUIT "There is no user named "_$$BRIEF^MEVTEXT(name,80)_"."
 IF ien["^" QUIT "The server has several users named "_name_several
 IF '$PIECE(^MEVUSR(ien,0),"^",4) QUIT name_" may not sign on here."
 IF $$CROWDED^MEVLIMITS(ien) QUIT name_" has "_$$SESSIONS^MEVLIMITS_" sessions already. End one of them first."
 QUIT ""
 ;
NAMED(name) ; The number of the user with this name; empty for an unknown name
 ; Of several users, the one who may sign on, or all who may, separated by "^".
 NEW able,ien,known
 SET (able,ien,known)=""
 FOR  SET ien=$ORDER(^MEVUSR("B",$EXTRACT(name,1,80),ien)) QUIT:ien=""  IF $PIECE(^MEVUSR(ien,0),"^")=name DO
 . SET known=ien
 . IF $PIECE(^MEVUSR(ien,0),"^",4) SET able=able_$SELECT(able="":"",1:"^")_ien
 QUIT $SELECT(able'="":able,1:known)
 ;
TURNAWAY(why) ; Refuses a sign-on, after a delay that grows with the number of refusals
 NEW person
 SET reply="-1^"_why,person=$TRANSLATE($$BRIEF^MEVTEXT(name,80),"^")
 DO SLOW^MEVLIMITS($$COUNT^MEVLIMITS("SIGNON "_$$CERTIFIED))
 DO REFUSED^MEVAUDIT(why)
 QUIT
 ;
KEYS ; Call: key ^ key ^ ...
 NEW index
 IF $LENGTH(param,"^")>1000 SET reply="-1^These are too many keys." QUIT
 FOR index=1:1:$LENGTH(param,"^") SET $PIECE(reply,"^",index)=$$HOLDS^MEVKEYS($PIECE(param,"^",index))
 QUIT
 ;
SAMPLE ; Call: whether the data are sample data
 SET reply=$$ISSAMPLE^MEVDATAVERSION
 QUIT
 ;
PATIENTS ; Call: the beginning of a name or of one of its words, a birth date, or a number; at most 250 lines
 NEW count,found,most
 SET count=0,most=250
 IF $LENGTH(param)<101 DO PATIENTS^MEVNAMEINDEX($$FOLD^MEVNAMEINDEX(param))
 QUIT
 ;
ADDPATIENT(dfn) ; Adds a patient to the list, once
 QUIT:$DATA(found(dfn))
 SET found(dfn)="",count=count+1,reply(count)=$$PATIENTLINE(dfn)
 QUIT
 ;
PATIENTLINE(dfn) ; number ^ name ^ sex ^ birth date ^ age in years
 QUIT dfn_"^"_$PIECE(^MEVPAT(dfn,0),"^",1,3)_"^"_$$AGE^MEVDATE($PIECE(^MEVPAT(dfn,0),"^",3))
 ;
PATIENT ; Call: number
 SET reply=$SELECT($$KNOWN(param):$$PATIENTLINE(param),1:$$NOPATIENT(param))
 QUIT
 ;
KNOWN(dfn) ; True if the patient exists
 QUIT $SELECT(dfn?1N.8N:$DATA(^MEVPAT(dfn,0))#10,1:0)
 ;
NOPATIENT(dfn) ; The error reply for a patient that does not exist
 QUIT "-1^There is no patient "_$TRANSLATE($$BRIEF^MEVTEXT(dfn,20),"^"," ")_"."
 ;
VISITS ; Call: patient number; latest first, at most 250 lines
 NEW count,ien,inverse
 IF '$$KNOWN(param) SET reply=$$NOPATIENT(param) QUIT
 SET count=0,inverse=""
 FOR  SET inverse=$ORDER(^MEVVST("AA",param,inverse)) QUIT:inverse=""  QUIT:count=250  DO
 . SET ien=""
 . FOR  SET ien=$ORDER(^MEVVST("AA",param,inverse,ien)) QUIT:ien=""  QUIT:count=250  DO
 . . SET count=count+1,reply(count)=$$VISITLINE(ien)
 QUIT
 ;
VISITLINE(ien) ; number ^ date and time ^ location ^ provider ^ category
 NEW location,node,provider
 SET node=^MEVVST(ien,0)
 SET location=$$NAME^MEVFILES(44,$PIECE(node,"^",3)),provider=$$NAME^MEVFILES(200,$PIECE(node,"^",4))
 QUIT ien_"^"_$PIECE(node,"^")_"^"_location_"^"_provider_"^"_$PIECE(node,"^",5)
 ;
VISIT ; Call: visit number
 IF param'?1N.8N SET reply="-1^There is no such visit." QUIT
 IF '$DATA(^MEVVST(param,0)) SET reply="-1^There is no visit "_param_"." QUIT
 SET reply=$$VISITLINE(param)_"^"_$PIECE(^MEVVST(param,0),"^",2)
 QUIT
