MEVAUDITREPORT ; The administrator's tool: prints the audit, and verifies that nobody changed it. MEVAUDIT says how it is kept.
 ; ^MEVAUX=last entry that is indexed    ^MEVAUX("PATIENT",patient,entry)=""
 ; ^MEVAUX("RECORD",global,record,entry)=""    ^MEVAUX("SIGNON",session,entry)=""
 ;
PRINT ; Entry: the entries that the environment asks for: mev_patient, mev_user_name, mev_since, mev_kind with mev_record
 NEW count,entry,index,patient,record,root,since,user
 SET $ETRAP="WRITE ""The server failed: "",$ZSTATUS,! ZHALT 1"
 USE $PRINCIPAL:(WIDTH=1048576:NOWRAP:EXCEPTION="HALT")
 DO INDEX
 SET patient=$ZTRNLNM("mev_patient"),user=$ZTRNLNM("mev_user_name"),since=$ZTRNLNM("mev_since"),record=$ZTRNLNM("mev_record")
 SET root=$SELECT(record="":"",1:"MEV"_$ZTRNLNM("mev_kind")),(count,entry)=0
 SET index=$SELECT(record'="":"^MEVAUX(""RECORD"",root,record)",patient'="":"^MEVAUX(""PATIENT"",patient)",1:"^MEVAUD")
 FOR  SET entry=$ORDER(@index@(entry)) QUIT:'entry  IF $$ASKED(entry) DO SHOW(entry) SET count=count+1
 IF 'count WRITE "No such entry.",!
 HALT
 ;
INDEX ; Indexes the entries since the last time
 NEW entry,ien,last,node,root
 SET last=+$GET(^MEVAUD)
 FOR entry=$GET(^MEVAUX)+1:1:last DO
 . SET node=$GET(^MEVAUD(entry)),root=$PIECE(node,"^",9),ien=$PIECE(node,"^",10)
 . ; Entries from before the chain name their record only where something stood there before.
 . IF $$OLD(node) SET root=$PIECE($ORDER(^MEVAUD(entry,"BEFORE","")),"^",2) SET:root'="" ien=$ORDER(^MEVAUD(entry,"BEFORE","^"_root,""))
 . SET:root'="" ^MEVAUX("RECORD",root,ien,entry)=""
 . SET:$$PATIENT(entry,node)'="" ^MEVAUX("PATIENT",$$PATIENT(entry,node),entry)=""
 . IF $PIECE(node,"^",3,4)="MEVHOST SIGNON^1" SET ^MEVAUX("SIGNON",$PIECE(node,"^",6),entry)=""
 SET:last>$GET(^MEVAUX) ^MEVAUX=last
 QUIT
 ;
PATIENT(entry,node) ; An entry's patient, empty for none
 NEW ien,root
 IF '$$OLD(node) QUIT $PIECE(node,"^",8)
 SET root=$ORDER(^MEVAUD(entry,"BEFORE",""))
 IF root="" QUIT ""
 SET ien=$ORDER(^MEVAUD(entry,"BEFORE",root,""))
 QUIT $PIECE($GET(^MEVAUD(entry,"BEFORE",root,ien,0)),"^")
 ;
ASKED(entry) ; The entry is one of those that were asked for
 NEW node
 SET node=$GET(^MEVAUD(entry))
 IF user'="",$$PERSON^MEVAUDIT(node)'=user QUIT 0
 IF since]]$$UTC(node) QUIT 0
 QUIT $SELECT(patient="":1,1:$$PATIENT(entry,node)=patient)
 ;
UTC(node) ; When an entry was made, in UTC; from before the chain by the server's clock
 QUIT $SELECT($$OLD(node):$$LOCAL^MEVAUDIT(node),1:$PIECE(node,"^"))
 ;
OLD(node) ; An entry from before the chain
 QUIT $PIECE(node,"^")[","
 ;
SHOW(entry) ; One entry: a line, and what belongs to it in further ones
 NEW call,node,patient,record,session,sign
 SET node=^MEVAUD(entry),call=$PIECE(node,"^",3),session=$PIECE(node,"^",6)
 WRITE "Entry ",entry,"  ",$$UTC(node),$SELECT($$OLD(node):" (server's time)",1:""),"  ",$$PERSON^MEVAUDIT(node)
 IF $PIECE(node,"^",2) WRITE " (user ",$PIECE(node,"^",2),")"
 WRITE "  ",call,": ",$$VERB(entry,node)
 IF $PIECE(node,"^",10)'="" WRITE ", record ",$EXTRACT($PIECE(node,"^",9),4,9)," ",$PIECE(node,"^",10)
 IF $PIECE(node,"^",8)'="" WRITE ", patient ",$PIECE(node,"^",8)
 IF session WRITE ", session ",session
 WRITE !
 IF call="MEVHOST SIGNON" DO ORIGIN(entry) DO TEXT(entry,"WHY","refused") QUIT
 ; From where: as the session said when it signed on.
 IF session SET sign=$ORDER(^MEVAUX("SIGNON",session,entry),-1) IF sign DO ORIGIN(sign)
 DO TEXT(entry,"CALL","asked"),TEXT(entry,"CUT","cut; bytes and digest of the whole"),TEXT(entry,"WHY",$SELECT($PIECE(node,"^",4)<0:"refused",1:"note"))
 DO NODES(entry,"BEFORE","before"),NODES(entry,"AFTER","after")
 QUIT
 ;
VERB(entry,node) ; What was done
 IF $PIECE(node,"^",4)<0 QUIT "refused"
 IF $DATA(^MEVAUD(entry,"BEFORE")) QUIT $SELECT($DATA(^MEVAUD(entry,"AFTER")):"changed",$LENGTH(node,"^")<11:"changed or deleted",1:"deleted")
 IF $DATA(^MEVAUD(entry,"AFTER")) QUIT "made"
 QUIT $SELECT($PIECE(node,"^",3)?1"LOOK".E:"looked",1:"done")
 ;
ORIGIN(entry) ; From where a session signed on
 NEW text
 SET text=$GET(^MEVAUD(entry,"CALL"))
 WRITE "    session's name has the digest ",$PIECE(text,"^"),"; ",$SELECT($PIECE(text,"^",2)="":"on this machine",1:"certificate "_$PIECE(text,"^",2))
 IF $PIECE(text,"^",5)'="" WRITE " (number ",$PIECE(text,"^",5),")"
 IF $PIECE(text,"^",3)'="" WRITE ", from ",$PIECE(text,"^",3)
 WRITE !
 QUIT
 ;
TEXT(entry,part,what) ; One text of an entry, where it has it
 IF $DATA(^MEVAUD(entry,part))#10 WRITE "    ",what,": ",$$PRINTABLE^MEVTEXT(^MEVAUD(entry,part),""),!
 QUIT
 ;
NODES(entry,part,what) ; The nodes of a record as they were before or after
 NEW begin,name
 SET name="^MEVAUD("_entry_","""_part_""")",begin=$EXTRACT(name,1,$LENGTH(name)-1)_","
 FOR  SET name=$QUERY(@name) QUIT:$EXTRACT(name,1,$LENGTH(begin))'=begin  DO
 . WRITE "    ",what," ",$EXTRACT(name,$LENGTH(begin)+1,$LENGTH(name)-1),": ",$$PRINTABLE^MEVTEXT(@name,""),!
 QUIT
 ;
VERIFY ; Entry: looks at each entry, and ends with 1 where one was changed, is missing or was put in
 ; mev_kept is an entry's number and hash, as an earlier run printed it: it proves that nobody has made the chain again since.
 NEW began,entry,expected,faults,former,head,kept,last
 SET $ETRAP="WRITE ""The server failed: "",$ZSTATUS,! ZHALT 1"
 ; In this order: a session that files an entry meanwhile moves the head with it.
 SET last=$ORDER(^MEVAUD(""),-1),head=$GET(^MEVAUD),kept=$ZTRNLNM("mev_kept")
 SET (began,faults)=0,expected=1,(entry,former)=""
 IF 'head,$DATA(^MEVAUX)!$DATA(^MEVCHG)!$DATA(^MEVDONE) DO FAULT("All entries are missing.")
 FOR  SET entry=$ORDER(^MEVAUD(entry)) QUIT:entry=""  QUIT:entry?1N.N&(entry>head)&(entry'=last)  DO ONE(entry)
 IF +head'<expected DO FAULT($$RANGE(expected,+head)_" missing at the end.")
 IF began,$PIECE(head,"^",2)'=former DO FAULT("The head does not fit the last entry.")
 IF 'began,head DO FAULT("The audit has no chain yet: it begins when this version's first session has signed on.")
 IF kept'="",$PIECE($GET(^MEVAUD(+kept)),"^",11)'=$PIECE(kept," ",2) DO FAULT("Entry "_(+kept)_" is not the one whose hash was kept.")
 WRITE $FNUMBER(+head,",")," entries, ",$SELECT(faults:$FNUMBER(faults,",")_" fault"_$SELECT(faults=1:".",1:"s."),1:"nothing changed, missing or put in."),!
 WRITE "Keep this line where nobody who can write the data can change it, for --verify later:",!,+head," ",$PIECE(head,"^",2),!
 IF faults ZHALT 1
 HALT
 ;
ONE(entry) ; Looks at one entry: its place, its hash over the one before, and its lines in the indexes
 NEW ien,name,node,nodes,own,patient,root
 IF entry'?1N.N!(entry>head)!(entry<expected) DO FAULT("Entry "_entry_" was put in.") QUIT
 IF entry>expected DO FAULT($$RANGE(expected,entry-1)_" missing.")
 SET expected=entry+1,node=$GET(^MEVAUD(entry)),own=$PIECE(node,"^",11)
 IF 'began,$LENGTH(node,"^")<11 SET former=$$LINK^MEVAUDIT(former,entry,node) QUIT
 SET began=1
 IF own'=$$LINK^MEVAUDIT(former,entry,$PIECE(node,"^",1,10),.nodes)!($LENGTH(node,"^")>11) DO FAULT("Entry "_entry_" was changed, or the one before it.")
 SET former=own,name="^MEVAUD("_entry_")"
 FOR  SET name=$QUERY(@name) QUIT:$PIECE(name,"^MEVAUD("_entry_",")'=""!(name="")  SET nodes=nodes-1
 IF nodes DO FAULT("Entry "_entry_" holds what does not belong there.")
 IF entry>$GET(^MEVAUX) QUIT
 SET patient=$PIECE(node,"^",8),root=$PIECE(node,"^",9),ien=$PIECE(node,"^",10)
 IF patient'="",'$DATA(^MEVAUX("PATIENT",patient,entry)) DO FAULT("Entry "_entry_" is missing in the index of patients.")
 IF root'="",'$DATA(^MEVAUX("RECORD",root,ien,entry)) DO FAULT("Entry "_entry_" is missing in the index of records.")
 QUIT
 ;
RANGE(first,last) ;
 QUIT $SELECT(first=last:"Entry "_first_" is",1:"Entries "_first_" to "_last_" are")
 ;
FAULT(text) ; Prints a fault
 WRITE text,!
 SET faults=faults+1
 QUIT
