MEVAUDIT ; The audit: who did what, when, in which session; each entry's hash includes that of the entry before
 ; MEVAUDITREPORT prints and checks it. An entry is filed in the transaction of the change that it records.
 ;
 ; ^MEVAUD=number of the last entry ^ its hash
 ; ^MEVAUD(entry)=time in UTC ^ user ^ call ^ "1" or the error number ^ seconds from UTC to the server's time ^ session
 ;   ^ user's name ^ patient ^ global without its "^" ^ record ^ hash
 ; ^MEVAUD(entry,"CALL")=parameter; for a sign-on: digest of the session's name ^ certificate's user ^ address
 ;   ^ protocol ^ certificate's number
 ; ^MEVAUD(entry,"CUT")=length ^ digest of the whole parameter, if "CALL" is cut    ^MEVAUD(entry,"WHY")=refusal
 ; ^MEVAUD(entry,"BEFORE",global,record)=the record before    ^MEVAUD(entry,"AFTER",global,record)=the record after
 ; Entries of older servers have four pieces, the first of them $HOROLOG, and no "AFTER". CHAIN adds them to the chain.
 ;
 ; Saves do not update the indexes: MEVAUDITREPORT does, before it prints.
 ;
BEGIN() ; The number of this transaction's entry
 QUIT $GET(^MEVAUD)+1
 ;
TOUCHED(root,ien) ; Notes that the current call files or changes a record
 SET:$GET(audit) touched(root,ien)=""
 QUIT
 ;
CHANGE(call) ; Files the entry of a change, made or refused: the parameter and the new version of each record
 NEW ien,patient,record,root,table
 SET (patient,record,root,table)=""
 FOR  SET root=$ORDER(touched(root)) QUIT:root=""  SET ien="" FOR  SET ien=$ORDER(touched(root,ien)) QUIT:ien=""  DO
 . SET table=root,record=ien
 . IF $DATA(@root@(ien)) MERGE ^MEVAUD(audit,"AFTER",root,ien)=@root@(ien)
 . QUIT:root="^MEVUSR"!(root="^MEVCLS")
 . SET patient=$PIECE($GET(@root@(ien,0),$GET(^MEVAUD(audit,"BEFORE",root,ien,0))),"^")
 IF reply'<0 SET ^MEVAUD(audit,"CALL")=asked
 IF reply<0 DO ABOUT,SHORTEN SET ^MEVAUD(audit,"WHY")=$$BRIEF^MEVTEXT($PIECE(reply,"^",2,9),200)
 DO FILE(call,$PIECE(reply,"^"),patient,table,record)
 QUIT
 ;
ABOUT ; Sets table, record, and patient of a refused change, as far as it names existing ones
 NEW first,visit
 IF " SET SETREG DEL "'[(" "_$PIECE(name," ",2)_" ") QUIT
 SET table=$$ROOT^MEVCONFLICTS,first=$PIECE(asked,"^"),visit=$PIECE(asked,"^",2)
 IF first?1N.11N,$DATA(@table@(first,0))#10 SET record=first,patient=$PIECE(@table@(first,0),"^") QUIT
 IF $$IS1^MEVCONFLICTS(table) SET patient=first
 IF table="^MEVREF" SET patient=$PIECE(asked,"^",4)
 IF patient="",visit?1N.8N SET patient=$PIECE($GET(^MEVVST(visit,0)),"^",2)
 SET table="" ; there is no such record
 IF '$$KNOWN^MEVHOSTCALLS(patient) SET patient=""
 QUIT
 ;
SHORTEN ; Counts a refused call and stores its parameter, cut shorter after many refusals
 NEW most
 SET refusals=$$COUNT^MEVLIMITS(user)
 SET most=$SELECT(refusals>$$PATIENCE^MEVLIMITS:200,1:4096)
 SET ^MEVAUD(audit,"CALL")=$EXTRACT(asked,1,most)
 IF $LENGTH(asked)>most SET ^MEVAUD(audit,"CUT")=$LENGTH(asked)_"^"_$$DIGEST(asked)
 QUIT
 ;
ASKED(entry,text) ; True if the entry's call had this parameter
 IF '$DATA(^MEVAUD(entry,"CUT")) QUIT ^MEVAUD(entry,"CALL")=text
 QUIT ^MEVAUD(entry,"CUT")=($LENGTH(text)_"^"_$$DIGEST(text))
 ;
FILE(call,result,patient,root,record) ; Files the entry's main node, after its other nodes, and the new head
 NEW hash,node,now
 SET now=$ZHOROLOG
 SET node=$$TEXT(now*86400+$PIECE(now,",",2)+$PIECE(now,",",4))_"Z"
 SET node=node_"^"_$GET(user)_"^"_call_"^"_result_"^"_-$PIECE(now,",",4)
 SET node=node_"^"_$GET(session)_"^"_$GET(person)_"^"_patient_"^"_$PIECE(root,"^",2)_"^"_record
 SET hash=$$LINK($PIECE($GET(^MEVAUD),"^",2),audit,node)
 SET ^MEVAUD(audit)=node_"^"_hash,^MEVAUD=audit_"^"_hash
 QUIT
 ;
LINK(former,entry,node,nodes) ; An entry's hash: over the former hash, the number, the main node, and all other nodes
 ; Sets nodes to the number of other nodes, so that --verify detects nodes of any other form. Avoids $QUERY: compiling
 ; each name that it returns takes as long as a save.
 NEW digits,first,ien,name,part,root,second,text
 SET text=former_"^"_entry_"^"_$LENGTH(node)_"^"_node,(part,root,ien,first,second)="",nodes=0
 FOR  SET part=$ORDER(^MEVAUD(entry,part)) QUIT:part=""  DO
 . IF $DATA(^MEVAUD(entry,part))#10 DO FIELD(part,^MEVAUD(entry,part))
 . FOR  SET root=$ORDER(^MEVAUD(entry,part,root)) QUIT:root=""  DO
 . . FOR  SET ien=$ORDER(^MEVAUD(entry,part,root,ien)) QUIT:ien=""  DO
 . . . FOR  SET first=$ORDER(^MEVAUD(entry,part,root,ien,first)) QUIT:first=""  DO
 . . . . SET name=part_"^"_root_"^"_ien_"^"_first
 . . . . IF $DATA(^MEVAUD(entry,part,root,ien,first))#10 DO FIELD(name,^MEVAUD(entry,part,root,ien,first))
 . . . . FOR  SET second=$ORDER(^MEVAUD(entry,part,root,ien,first,second)) QUIT:second=""  DO
 . . . . . DO FIELD(name_"^"_second,$GET(^MEVAUD(entry,part,root,ien,first,second)))
 DO &digest.sha256(text,.digits)
 QUIT digits
 ;
FIELD(name,value) ; Appends a node to text
 SET text=text_$LENGTH(name)_"^"_name_$LENGTH(value)_"^"_value,nodes=nodes+1
 QUIT
 ;
DIGEST(text) ; SHA-256 in hexadecimal digits, by the server's native library
 NEW digits
 DO &digest.sha256(text,.digits)
 QUIT digits
 ;
TEXT(seconds) ; Formats seconds since the $HOROLOG day 0 as 2026-11-21T19:23:15
 SET seconds=seconds\86400_","_(seconds#86400)
 QUIT $ZDATE(seconds,"YYYY-MM-DD")_"T"_$ZDATE(seconds,"24:60:SS")
 ;
LOCAL(node) ; An entry's time on the server's clock, as 2026-11-21T14:23:15
 NEW when
 SET when=$PIECE(node,"^")
 IF when["," QUIT $$TEXT(when*86400+$PIECE(when,",",2))
 QUIT $$TEXT($$SECONDS(when)+$PIECE(node,"^",5))
 ;
SECONDS(when) ; Parses 2026-11-21T19:23:15 into seconds since the $HOROLOG day 0
 NEW day,time
 SET day=$$DAY^MEVDATE($TRANSLATE($PIECE(when,"T"),"-")-17000000),time=$PIECE(when,"T",2)
 QUIT day*86400+($EXTRACT(time,1,2)*3600)+($EXTRACT(time,4,5)*60)+$EXTRACT(time,7,8)
 ;
WHO(entry) ; An entry's user and time on the server's clock: name ^ hh:mm ^ yyyy-mm-dd
 NEW node,when
 SET node=$GET(^MEVAUD(entry)),when=$$LOCAL(node)
 QUIT $$PERSON(node)_"^"_$EXTRACT(when,12,16)_"^"_$EXTRACT(when,1,10)
 ;
PERSON(node) ; The name of an entry's user
 IF $PIECE(node,"^",7)'="" QUIT $PIECE(node,"^",7)
 QUIT $$NAME^MEVFILES(200,$PIECE(node,"^",2))
 ;
NOTE(call,result,text,why,patient,root,record) ; Files an entry without a change of records, in its own transaction
 ; The caller does not wait for the disk; the entry gets there with the next save at the latest.
 NEW audit
 TSTART ():(SERIAL:TRANSACTIONID="BATCH")
 SET audit=$$BEGIN
 SET:text'="" ^MEVAUD(audit,"CALL")=text
 SET:why'="" ^MEVAUD(audit,"WHY")=why
 DO FILE(call,result,$GET(patient),$GET(root),$GET(record))
 TCOMMIT
 QUIT
 ;
REFUSED(why) ; Files a refused sign-on, with the given name and without a user's number
 NEW user
 SET user=0
 DO SIGNON(-1,why)
 QUIT
 ;
SIGNON(result,why) ; Files a sign-on, accepted or refused
 NEW text
 SET text=$EXTRACT($$DIGEST($PIECE(param,"^")),1,16)_"^"_$ZTRNLNM("mev_user")_"^"_$ZTRNLNM("mev_peer")
 SET text=text_"^"_$$BRIEF^MEVTEXT($PIECE(param,"^",3),10)_"^"_$ZTRNLNM("mev_certificate")
 DO NOTE("MEVHOST SIGNON",result,text,why)
 QUIT
 ;
SIGNOFF ; Files the regular end of a session
 DO:user NOTE("MEVHOST SIGNOFF",1,"","")
 QUIT
 ;
GONE(number) ; Files the end of a session that did not sign off
 NEW person,session,user
 SET user=$GET(^MEVSES(number,"USER")),session=number
 QUIT:'user
 SET person=$$NAME^MEVFILES(200,user)
 DO NOTE("MEVHOST SIGNOFF",1,"","The session ended without signing off; this was found now.")
 QUIT
 ;
LOOK(name) ; Files that a patient's data was read, once in ten minutes for each session, patient, and kind of access
 ; If that fails (full disk), the reply is sent anyway, and the next look tries to file it again.
 NEW access,call,dfn,now,record,root
 SET now=$ZUT\1000000
 ; Bounds the memory of a session that reads very many patients.
 IF now<seen!(now-seen>600)!(seen("count")>50000) KILL seen SET seen=now,seen("count")=0
 SET call=name_" "_purpose
 QUIT:$DATA(seen(call,param))
 SET (record,root)=""
 DO WHOM
 IF $LENGTH(param)<20 SET seen(call,param)="",seen("count")=seen("count")+1
 QUIT:$DATA(seen(dfn,access,root_record))
 NEW $ETRAP,level
 SET level=$ZLEVEL,$ETRAP="ZGOTO level:UNKEPT^MEVAUDIT"
 DO NOTE("LOOK "_access,1,"","",dfn,root,record)
 SET seen(dfn,access,root_record)="",seen("count")=seen("count")+1
 DO READING^MEVLIMITS
 QUIT
 ;
UNKEPT ; Error trap of LOOK
 SET $ETRAP="GOTO BROKEN^MEVSESSION",$ECODE=""
 IF $TLEVEL TROLLBACK
 KILL seen(call,param)
 QUIT
 ;
WHOM ; Sets access and dfn of a look and, for a single record, root and record
 NEW first,second
 IF name="MEVHOST PATIENT"!(name="MEVHOST VISITS") SET access="PATIENT",dfn=param QUIT
 IF name="MEVHOST VISIT" SET access="PATIENT",dfn=$PIECE(reply,"^",6) QUIT
 IF name="MEVUTL GETRPT" SET access="REPORT",root="^MEVVST",record=param,dfn=$PIECE(^MEVVST(record,0),"^",2) QUIT
 SET root="^"_$PIECE(name," "),first=$PIECE(param,"^"),second=$PIECE(param,"^",2)
 IF name["REG"!(name["NOTE") SET access="DETAIL",root="^MEVREG",(dfn,record)=first QUIT
 IF first="" SET access="DETAIL",record=second,dfn=$PIECE(@root@(record,0),"^") QUIT
 SET dfn=first
 IF root="^MEVREF",second'="" SET access="DETAIL",record=second QUIT
 ; A list reads the reproductive history with a third piece, a form without; for birth measurements the purpose decides.
 IF purpose="EDIT"!(root="^MEVREP"&($PIECE(param,"^",3)="")) SET access="DETAIL",record=first QUIT
 SET access="LIST",root=""
 QUIT
 ;
CHAIN ; Entry point of a conversion: hashes an older server's entries, which have no hashes, into the chain's first link
 ; No session of an older server may be running: it would add entries without hashes.
 NEW audit,hash,last
 SET last=$GET(^MEVAUD)
 IF 'last!(last["^") QUIT
 SET hash=$$FOLDED(last)
 TSTART ():SERIAL
 IF $GET(^MEVAUD)=last DO
 . SET ^MEVAUD=last_"^"_hash,audit=$$BEGIN,^MEVAUD(audit,"CALL")=last
 . DO FILE("CHAIN",1,"","","")
 TCOMMIT
 QUIT
 ;
FOLDED(last) ; One hash over the entries of an older server
 NEW entry,hash
 SET hash=""
 FOR entry=1:1:last SET hash=$$LINK(hash,entry,$GET(^MEVAUD(entry)))
 QUIT hash
